#include "tools/link_table.h"

#include "tools/netlink_dump.h"

#include <linux/if_link.h>
#include <linux/if_tun.h>
#include <linux/rtnetlink.h>

#include <array>
#include <string_view>

namespace tolvo::tools {

namespace {

constexpr std::array<std::string_view, 5> tunnelPrefixes{"utun", "ipsec", "ppp", "tun", "tap"};

struct TunnelKind {
    std::string_view linkKind;
    std::string_view prefix;
};

/// WireGuard is a utun elsewhere too. The GRE and IP-in-IP kinds are left out: they join sites and hide nothing.
constexpr std::array<TunnelKind, 9> tunnelKinds{{{"wireguard", "utun"},
                                                 {"amneziawg", "utun"},
                                                 {"tun", "tun"},
                                                 {"ovpn", "tun"},
                                                 {"ovpn-dco", "tun"},
                                                 {"ppp", "ppp"},
                                                 {"xfrm", "ipsec"},
                                                 {"vti", "ipsec"},
                                                 {"vti6", "ipsec"}}};

std::string_view tunnelPrefix(const Link& link) {
    if (link.isTap)
        return "tap";
    const auto found = std::ranges::find(tunnelKinds, link.kind, &TunnelKind::linkKind);
    return found == tunnelKinds.end() ? std::string_view{} : found->prefix;
}

bool isWordCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

void parseTunData(Bytes data, Link& link) {
    visitAttributes(data, [&](std::uint16_t type, Bytes payload) {
        if (type == IFLA_TUN_TYPE)
            link.isTap = valueAt<std::uint8_t>(payload) == IFF_TAP;
    });
}

void parseLinkInfo(Bytes info, Link& link) {
    Bytes data;
    visitAttributes(info, [&](std::uint16_t type, Bytes payload) {
        if (type == IFLA_INFO_KIND)
            link.kind = textAt(payload);
        else if (type == IFLA_INFO_DATA)
            data = payload;
    });
    if (link.kind == "tun")
        parseTunData(data, link);
}

} // namespace

void parseLink(const NetlinkMessage& message, std::vector<Link>& links) {
    const auto header = valueAt<ifinfomsg>(message.payload);
    if (message.type != RTM_NEWLINK || !header)
        return;
    Link link{static_cast<unsigned>(header->ifi_index), {}, header->ifi_flags, 0, {}, false};
    visitAttributes(behind(message.payload, sizeof(ifinfomsg)), [&](std::uint16_t type, Bytes payload) {
        if (type == IFLA_IFNAME)
            link.name = textAt(payload);
        else if (type == IFLA_MTU)
            link.mtu = valueAt<std::uint32_t>(payload).value_or(0);
        else if (type == IFLA_LINKINFO)
            parseLinkInfo(payload, link);
    });
    if (!link.name.empty())
        links.push_back(std::move(link));
}

std::expected<std::vector<Link>, int> readLinks() {
    struct {
        ifinfomsg header{};
        nlattr maskHeader{NLA_HDRLEN + sizeof(std::uint32_t), IFLA_EXT_MASK};
        std::uint32_t mask = RTEXT_FILTER_SKIP_STATS;
    } const request;
    return dumpTable<Link>(NETLINK_ROUTE, RTM_GETLINK, request, parseLink);
}

std::string toolName(const Link& link) {
    std::string name = link.name;
    std::ranges::replace_if(name, [](char c) { return !isWordCharacter(c); }, '_');
    const std::string_view prefix = tunnelPrefix(link);
    const bool isNamedAsTunnel =
        std::ranges::any_of(tunnelPrefixes, [&](std::string_view known) { return name.starts_with(known); });
    if (prefix.empty() || isNamedAsTunnel)
        return name;
    return std::string(prefix) + '_' + name;
}

bool isWireGuard(const Link& link) {
    return link.kind == "wireguard" || link.kind == "amneziawg";
}

} // namespace tolvo::tools
