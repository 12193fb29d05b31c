#include "probes/vpn_routes.h"

#include "core/text.h"
#include "probes/vpn_tunnel_kind.h"

#include <algorithm>
#include <array>

namespace tolvo {

namespace {

/// Sooner known than all the columns, and false for most lines.
bool mayNameTunnel(std::string_view line) {
    return std::ranges::any_of(rawValueTable<VPNTunnelKind>,
                               [&](const auto& kind) { return line.contains(kind.second); });
}

bool isHeading(std::string_view firstToken) {
    constexpr std::array<std::string_view, 4> headings{"Destination", "Routing", "Internet:", "Internet6:"};
    return std::ranges::count(headings, firstToken) > 0;
}

} // namespace

std::vector<VPNRouteEntry> parseVPNRoutes(std::string_view output) {
    std::vector<VPNRouteEntry> routes;
    for (const std::string_view line : nonEmptyLines(output)) {
        if (!mayNameTunnel(line))
            continue;
        const auto columns = tokens(line);
        if (columns.empty() || isHeading(columns.front()))
            continue;
        // Which column names the interface differs between tables; an expiry may stand behind it.
        const auto tunnel = std::ranges::find_if(columns.rbegin(), columns.rend(), [](std::string_view column) {
            return vpnTunnelKind(column).has_value();
        });
        if (tunnel != columns.rend())
            routes.push_back({std::string(columns.front()), std::string(*tunnel)});
    }
    return routes;
}

} // namespace tolvo
