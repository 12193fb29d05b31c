#pragma once

#include "tools/ip_address.h"
#include "tools/netlink_message.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <vector>

namespace tolvo::tools {

/// One way of a route through an interface. A multipath route is several of them.
struct Route {
    IPAddress destination;
    unsigned prefixLength = 0;
    /// Absent when the destination is on the link. An IPv4 route may have an IPv6 gateway.
    std::optional<IPAddress> gateway;
    unsigned interfaceIndex = 0;
    std::uint32_t table = 0;
    /// The lower one wins between routes to the same destination.
    std::uint32_t metric = 0;
    /// Whether somebody added it, and not the kernel with an address.
    bool isAdded = false;

    bool operator==(const Route&) const = default;

    bool isDefault() const { return prefixLength == 0; }
    /// Whether it stands where the kernel looks without any policy rule.
    bool isInMainTable() const;
};

/// Appends the ways of one RTM_NEWROUTE message. Routes that lead nowhere (unreachable, blackhole), to this machine
/// (table local) or to groups, and dead ways have none.
void parseRoute(const NetlinkMessage& message, std::vector<Route>& routes);

/// The routes of all tables for a family (AF_UNSPEC for both), in the kernel's order; the error is an errno value.
std::expected<std::vector<Route>, int> readRoutes(int family);

} // namespace tolvo::tools
