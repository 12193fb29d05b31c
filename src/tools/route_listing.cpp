#include "tools/route_listing.h"

#include "tools/text_output.h"

#include <sys/socket.h>

#include <algorithm>

namespace tolvo::tools {

namespace {

/// Octets that are shown of an IPv4 network: those of its class, and on up to the last that is not 0.
std::size_t shownOctets(const IPAddress& network) {
    std::size_t count = network.bytes[0] < 128 ? 1 : network.bytes[0] < 192 ? 2 : 3;
    for (std::size_t i = count; i < 4; ++i) {
        if (network.bytes[i] != 0)
            count = i + 1;
    }
    return count;
}

std::string networkText(const Route& route) {
    if (route.destination.family == AF_INET6)
        return route.destination.text();
    std::string text;
    for (std::size_t i = 0; i < shownOctets(route.destination); ++i) {
        if (i > 0)
            text += '.';
        appendNumber(text, route.destination.bytes[i]);
    }
    return text;
}

std::string zoned(std::string text, const IPAddress& address, std::string_view zone) {
    if (address.isLinkLocal())
        text.append("%").append(zone);
    return text;
}

std::string gatewayText(const Route& route, std::string_view zone) {
    if (route.gateway && !route.gateway->isUnspecified())
        return zoned(route.gateway->text(), *route.gateway, zone);
    std::string text = "link#";
    appendNumber(text, route.interfaceIndex);
    return text;
}

std::string flagsText(const Route& route) {
    std::string flags = "U";
    if (route.gateway)
        flags += 'G';
    if (route.prefixLength == route.destination.bitCount())
        flags += 'H';
    if (route.isAdded)
        flags += 'S';
    return flags;
}

void appendColumns(std::string& out, int family, std::string_view destination, std::string_view gateway,
                   std::string_view flags) {
    appendColumn(out, destination, family == AF_INET6 ? 40 : 19);
    appendColumn(out, gateway, family == AF_INET6 ? 32 : 19);
    appendColumn(out, flags, 8);
}

bool leadsTo(const Route& route, const IPAddress& address) {
    return route.prefixLength == route.destination.bitCount() && route.destination == address;
}

enum class Naming { Own, Tool };

/// A route whose link is gone since is left out: it is on its way out too.
void appendFamily(std::string& out, int family, std::span<const Route> routes, std::span<const Link> links,
                  Naming naming) {
    out += family == AF_INET6 ? "\nInternet6:\n" : "\nInternet:\n";
    appendColumns(out, family, "Destination", "Gateway", "Flags");
    out += "Netif\n";
    for (const Route& route : routes) {
        const auto link = std::ranges::find(links, route.interfaceIndex, &Link::index);
        if (route.destination.family != family || link == links.end())
            continue;
        const std::string zone = printable(link->name);
        appendColumns(out, family, destinationText(route, zone), gatewayText(route, zone), flagsText(route));
        out += (naming == Naming::Tool ? toolName(*link) : zone) + '\n';
    }
}

} // namespace

std::string destinationText(const Route& route, std::string_view zone) {
    if (route.isDefault())
        return "default";
    if (route.prefixLength == route.destination.bitCount())
        return zoned(route.destination.text(), route.destination, zone);
    std::string text = zoned(networkText(route), route.destination, zone) + '/';
    appendNumber(text, route.prefixLength);
    return text;
}

std::string listAllRoutes(std::span<const Route> routes, std::span<const Link> links,
                          std::span<const InterfaceAddress> addresses) {
    // IPv6 has such a route for each of its addresses; IPv4 keeps them in the local table.
    std::vector<Route> listed(routes.begin(), routes.end());
    std::erase_if(listed, [&](const Route& route) {
        return std::ranges::any_of(addresses, [&](const auto& own) { return leadsTo(route, own.address); });
    });
    std::string out = "Routing tables\n";
    for (const int family : {AF_INET, AF_INET6})
        appendFamily(out, family, listed, links, Naming::Tool);
    return out;
}

std::string listRouterRoutes(int family, std::span<const Route> routes, std::span<const Link> links) {
    std::vector<Route> listed(routes.begin(), routes.end());
    const auto isMainDefault = [](const Route& route) { return route.isDefault() && route.isInMainTable(); };
    if (std::ranges::any_of(listed, isMainDefault))
        std::erase_if(listed, [](const Route& route) { return !route.isInMainTable(); });
    std::string out = "Routing tables\n";
    appendFamily(out, family, listed, links, Naming::Own);
    return out;
}

} // namespace tolvo::tools
