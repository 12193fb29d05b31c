#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// A route through a tunnel interface.
struct VPNRouteEntry {
    std::string destination;
    std::string interfaceName;

    bool operator==(const VPNRouteEntry&) const = default;
};

/// Reads the routes of the table that "netstat -rn" prints which name a tunnel interface.
std::vector<VPNRouteEntry> parseVPNRoutes(std::string_view output);

} // namespace tolvo
