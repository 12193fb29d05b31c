#include "tools/interface_listing.h"

#include "tools/text_output.h"

#include <net/if.h>
#include <sys/socket.h>

#include <array>
#include <charconv>
#include <string_view>

namespace tolvo::tools {

namespace {

struct Flag {
    unsigned bit;
    std::string_view name;
};

/// Not the kernel's newer flags above 16 bits: the name of LOWER_UP would be taken for UP.
constexpr std::array<Flag, 9> flagNames{{{IFF_UP, "UP"},
                                         {IFF_BROADCAST, "BROADCAST"},
                                         {IFF_LOOPBACK, "LOOPBACK"},
                                         {IFF_POINTOPOINT, "POINTOPOINT"},
                                         {IFF_RUNNING, "RUNNING"},
                                         {IFF_NOARP, "NOARP"},
                                         {IFF_PROMISC, "PROMISC"},
                                         {IFF_ALLMULTI, "ALLMULTI"},
                                         {IFF_MULTICAST, "MULTICAST"}}};

void appendHeader(std::string& out, const Link& link) {
    out += toolName(link) + ": flags=";
    appendNumber(out, link.flags & 0xFFFF);
    char separator = '<';
    for (const Flag& flag : flagNames) {
        if ((link.flags & flag.bit) == 0)
            continue;
        out += separator;
        out += flag.name;
        separator = ',';
    }
    out += separator == '<' ? "<> mtu " : "> mtu ";
    appendNumber(out, link.mtu);
    out += '\n';
}

std::string netmaskText(unsigned prefixLength) {
    const std::uint32_t mask = prefixLength == 0 ? 0 : ~std::uint32_t{0} << (32 - std::min(prefixLength, 32U));
    std::array<char, 8> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), mask, 16).ptr;
    const std::string text(digits.data(), end);
    return "0x" + std::string(digits.size() - text.size(), '0') + text;
}

void appendAddress(std::string& out, const Link& link, const InterfaceAddress& address) {
    const bool isIPv6 = address.address.family == AF_INET6;
    out += (isIPv6 ? "\tinet6 " : "\tinet ") + address.address.text();
    if (address.address.isLinkLocal())
        out += '%' + printable(link.name);
    if (address.peer)
        out += " --> " + address.peer->text();
    if (isIPv6) {
        out += " prefixlen ";
        appendNumber(out, address.prefixLength);
    } else {
        out += " netmask " + netmaskText(address.prefixLength);
    }
    out += '\n';
}

} // namespace

std::string listInterfaces(std::span<const Link> links, std::span<const InterfaceAddress> addresses) {
    std::string out;
    for (const Link& link : links) {
        appendHeader(out, link);
        for (const InterfaceAddress& address : addresses) {
            if (address.interfaceIndex == link.index)
                appendAddress(out, link, address);
        }
        out += (link.flags & IFF_RUNNING) != 0 ? "\tstatus: active\n" : "\tstatus: inactive\n";
    }
    return out;
}

} // namespace tolvo::tools
