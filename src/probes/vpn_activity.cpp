#include "probes/vpn_activity.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tolvo {

namespace {

bool isUsableIPv4Address(std::string_view text, const AddressParsing& addressParser) {
    const auto address = addressParser.ipv4Address(text);
    if (!address)
        return false;
    const auto [first, second, third, fourth] = address->bytes;
    const bool isLinkLocal = first == 169 && second == 254;
    return first != 0 && first != 127 && !isLinkLocal && first < 224;
}

bool isUsableIPv6Address(std::string_view text, const AddressParsing& addressParser) {
    const auto address = addressParser.ipv6Address(text.substr(0, text.find('%')));
    if (!address)
        return false;
    const auto& bytes = address->bytes;
    const bool isUnspecifiedOrLoopback =
        bytes.back() <= 1 && std::all_of(bytes.begin(), bytes.end() - 1, [](auto byte) { return byte == 0; });
    const bool isLinkLocal = bytes[0] == 0xFE && (bytes[1] & 0xC0) == 0x80;
    const bool isMulticast = bytes[0] == 0xFF;
    return !isUnspecifiedOrLoopback && !isLinkLocal && !isMulticast;
}

/// The network may be in the short form of route tables, such as "10.8" for 10.8.0.0.
bool isSpecificIPv4Network(std::string_view network) {
    constexpr std::array<std::string_view, 3> unspecificNetworks{"", "0", "127"};
    return std::ranges::count(unspecificNetworks, network) == 0 && !network.starts_with("169.254") &&
           !network.starts_with("224.") && !network.starts_with("239.");
}

bool hasSpecificRoute(const VPNTunnelInterfaceStatus& tunnel, const std::vector<VPNRouteEntry>& routes,
                      const AddressParsing& addressParser) {
    return std::ranges::any_of(routes, [&](const VPNRouteEntry& route) {
        return route.interfaceName == tunnel.name && isSpecificRoute(route.destination, addressParser);
    });
}

bool isRunning(const VPNTunnelInterfaceStatus& tunnel) {
    const bool isInactive = tunnel.status && lowerCased(trimmed(*tunnel.status)) == "inactive";
    return tunnel.flags.contains("UP") && tunnel.flags.contains("RUNNING") && !isInactive;
}

/// Whether an IPv4 address alone tells a VPN. Virtual machines and containers have tun and tap interfaces as well.
bool needsNoRoute(VPNTunnelKind kind) {
    switch (kind) {
    case VPNTunnelKind::Utun:
    case VPNTunnelKind::Ipsec:
    case VPNTunnelKind::Ppp:
        return true;
    case VPNTunnelKind::Tun:
    case VPNTunnelKind::Tap:
        return false;
    }
    std::unreachable();
}

bool carriesVPN(const VPNTunnelInterfaceStatus& tunnel, const std::vector<VPNRouteEntry>& routes,
                const AddressParsing& addressParser) {
    if (!isRunning(tunnel))
        return false;
    const auto isUsableIPv4 = [&](const std::string& text) { return isUsableIPv4Address(text, addressParser); };
    const auto isUsableIPv6 = [&](const std::string& text) { return isUsableIPv6Address(text, addressParser); };
    const bool hasIPv4 = std::ranges::any_of(tunnel.ipv4Addresses, isUsableIPv4);
    if (hasIPv4 && needsNoRoute(tunnel.kind))
        return true;
    return (hasIPv4 || std::ranges::any_of(tunnel.ipv6Addresses, isUsableIPv6)) &&
           hasSpecificRoute(tunnel, routes, addressParser);
}

} // namespace

bool isSpecificRoute(std::string_view destination, const AddressParsing& addressParser) {
    constexpr std::array<std::string_view, 4> defaultRoutes{"default", "::/0", "0/1", "128.0/1"};
    if (std::ranges::count(defaultRoutes, lowerCased(destination)) > 0)
        return false;
    const auto slash = destination.find('/');
    const std::string_view network = destination.substr(0, slash);
    if (destination.contains(':'))
        return isUsableIPv6Address(network, addressParser);
    if (slash == std::string_view::npos)
        return isUsableIPv4Address(network, addressParser);
    return isSpecificIPv4Network(network);
}

bool evaluateVPNActivity(const std::vector<VPNConnectionServiceStatus>& services,
                         const std::vector<VPNTunnelInterfaceStatus>& tunnels, const std::vector<VPNRouteEntry>& routes,
                         const AddressParsing& addressParser) {
    const auto isConnected = [](const auto& service) { return service.state == VPNConnectionServiceState::Connected; };
    if (std::ranges::any_of(services, isConnected))
        return true;
    return std::ranges::any_of(tunnels, [&](const auto& tunnel) { return carriesVPN(tunnel, routes, addressParser); });
}

} // namespace tolvo
