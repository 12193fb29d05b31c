#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tolvo {

/// A network interface as the kernel describes it.
struct NetworkLink {
    int index = 0;
    std::string name;
    /// The driver's kind of a virtual link ("bridge", "wireguard"); empty for a device.
    std::string kind;
    /// ARPHRD_...
    std::uint16_t hardwareType = 0;
    /// IFF_...
    std::uint32_t flags = 0;
    /// The link that this one stands on, if it is in the same network namespace; 0 is none.
    int lowerIndex = 0;
    /// The bridge or bond that this one is a part of; 0 is none.
    int masterIndex = 0;

    bool operator==(const NetworkLink&) const = default;
};

/// A route that leads to anywhere, in whatever table it stands.
struct DefaultRoute {
    std::uint32_t table = 0;
    int linkIndex = 0;

    bool operator==(const DefaultRoute&) const = default;
    auto operator<=>(const DefaultRoute&) const = default;
};

/// What the kernel knows of the ways out of this machine.
struct RoutingState {
    std::vector<NetworkLink> links;
    std::set<DefaultRoute> defaultRoutes;
    /// The tables that traffic without any mark of its own is looked up in, the main one among them.
    std::set<std::uint32_t> generalTables;
};

/// Reads it whole from the kernel, which takes far less than a millisecond on a usual machine. Nothing if the kernel
/// refused or the tables changed meanwhile.
std::optional<RoutingState> readRoutingState();

} // namespace tolvo
