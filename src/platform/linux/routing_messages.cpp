#include "platform/linux/routing_messages.h"

#include <linux/fib_rules.h>
#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <netlink/attr.h>
#include <netlink/msg.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tolvo {

namespace {

/// The attributes of one message behind its fixed header, each read with a check of its length.
template<class Header, int MaxAttribute>
class ParsedMessage {
public:
    static std::optional<ParsedMessage> from(nlmsghdr& message) {
        ParsedMessage parsed;
        if (!nlmsg_valid_hdr(&message, sizeof(Header)) ||
            nlmsg_parse(&message, sizeof(Header), parsed.attributes_.data(), MaxAttribute, nullptr) < 0)
            return std::nullopt;
        parsed.header_ = static_cast<const Header*>(nlmsg_data(&message));
        return parsed;
    }

    const Header& header() const { return *header_; }
    nlattr* attribute(int type) const { return attributes_[static_cast<std::size_t>(type)]; }
    bool has(int type) const { return attribute(type) != nullptr; }
    std::uint32_t number(int type, std::uint32_t otherwise) const {
        nlattr* found = attribute(type);
        return found && nla_len(found) >= 4 ? nla_get_u32(found) : otherwise;
    }
    int index(int type) const { return static_cast<int>(number(type, 0)); }
    std::string text(int type) const { return textOf(attribute(type)); }

    static std::string textOf(nlattr* attribute) {
        if (!attribute)
            return {};
        const std::string_view bytes(static_cast<const char*>(nla_data(attribute)),
                                     static_cast<std::size_t>(nla_len(attribute)));
        return std::string(bytes.substr(0, bytes.find('\0')));
    }

private:
    const Header* header_ = nullptr;
    std::array<nlattr*, MaxAttribute + 1> attributes_{};
};

using LinkMessage = ParsedMessage<ifinfomsg, IFLA_MAX>;
using RouteMessage = ParsedMessage<rtmsg, RTA_MAX>;
using RuleMessage = ParsedMessage<fib_rule_hdr, FRA_MAX>;

std::string linkKind(nlattr* linkInfo) {
    std::array<nlattr*, IFLA_INFO_MAX + 1> attributes{};
    if (!linkInfo || nla_parse_nested(attributes.data(), IFLA_INFO_MAX, linkInfo, nullptr) < 0)
        return {};
    return LinkMessage::textOf(attributes[IFLA_INFO_KIND]);
}

void addLink(RoutingState& state, nlmsghdr& message) {
    const auto parsed = LinkMessage::from(message);
    if (!parsed)
        return;
    // The lower link's index means nothing here if that link is in another namespace, as a container's is.
    const int lowerIndex = parsed->has(IFLA_LINK_NETNSID) ? 0 : parsed->index(IFLA_LINK);
    state.links.push_back({parsed->header().ifi_index, parsed->text(IFLA_IFNAME),
                           linkKind(parsed->attribute(IFLA_LINKINFO)), parsed->header().ifi_type,
                           parsed->header().ifi_flags, lowerIndex, parsed->index(IFLA_MASTER)});
}

/// VPN clients that leave the router's default route in place cover it with the two halves of the address space, for
/// IPv6 with the quarters and sixteenths that make up the public addresses.
bool leadsAnywhere(const rtmsg& route) {
    const int widestPrefix = route.rtm_family == AF_INET ? 1 : 4;
    return (route.rtm_family == AF_INET || route.rtm_family == AF_INET6) && route.rtm_type == RTN_UNICAST &&
           route.rtm_dst_len <= widestPrefix && route.rtm_src_len == 0;
}

bool isUsable(unsigned nextHopFlags) {
    return (nextHopFlags & (RTNH_F_DEAD | RTNH_F_LINKDOWN)) == 0;
}

void addNextHops(RoutingState& state, std::uint32_t table, nlattr* multipath) {
    auto* hop = static_cast<rtnexthop*>(nla_data(multipath));
    int rest = nla_len(multipath);
    while (rest >= static_cast<int>(sizeof *hop) && RTNH_OK(hop, rest)) {
        if (isUsable(hop->rtnh_flags))
            state.defaultRoutes.insert({table, hop->rtnh_ifindex});
        rest -= RTNH_ALIGN(hop->rtnh_len);
        hop = RTNH_NEXT(hop);
    }
}

void addRoute(RoutingState& state, nlmsghdr& message) {
    const auto parsed = RouteMessage::from(message);
    if (!parsed || !leadsAnywhere(parsed->header()))
        return;
    const std::uint32_t table = parsed->number(RTA_TABLE, parsed->header().rtm_table);
    if (parsed->has(RTA_MULTIPATH))
        addNextHops(state, table, parsed->attribute(RTA_MULTIPATH));
    else if (parsed->has(RTA_OIF) && isUsable(parsed->header().rtm_flags))
        state.defaultRoutes.insert({table, parsed->index(RTA_OIF)});
}

/// Whether the rule holds for plain traffic of this machine, of whatever user, to whatever address. A mark that the
/// rule asks for is not on plain traffic; one that it excludes is how VPN clients spare their own packets.
bool selectsPlainTraffic(const RuleMessage& rule) {
    const fib_rule_hdr& header = rule.header();
    const bool isInverted = (header.flags & FIB_RULE_INVERT) != 0;
    if (rule.has(FRA_FWMARK) != isInverted)
        return false;
    if (rule.has(FRA_IIFNAME) && rule.text(FRA_IIFNAME) != "lo")
        return false;
    for (const int selector :
         {FRA_OIFNAME, FRA_UID_RANGE, FRA_IP_PROTO, FRA_SPORT_RANGE, FRA_DPORT_RANGE, FRA_TUN_ID}) {
        if (rule.has(selector))
            return false;
    }
    return header.src_len == 0 && header.dst_len == 0 && header.tos == 0;
}

void addRule(RoutingState& state, nlmsghdr& message) {
    const auto parsed = RuleMessage::from(message);
    if (parsed && parsed->header().action == FR_ACT_TO_TBL && selectsPlainTraffic(*parsed))
        state.generalTables.insert(parsed->number(FRA_TABLE, parsed->header().table));
}

} // namespace

void addRoutingMessage(RoutingState& state, nlmsghdr& message) {
    if (message.nlmsg_type == RTM_NEWLINK)
        addLink(state, message);
    else if (message.nlmsg_type == RTM_NEWROUTE)
        addRoute(state, message);
    else if (message.nlmsg_type == RTM_NEWRULE)
        addRule(state, message);
}

} // namespace tolvo
