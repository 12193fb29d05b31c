#pragma once

#include "tools/address_table.h"
#include "tools/link_table.h"
#include "tools/route_table.h"

#include <span>
#include <string>

namespace tolvo::tools {

/// How a route's destination reads: "default", a host without a length, an IPv4 network without its trailing zero
/// octets ("10.8/16", but as many as its class has: "128.0/1", "192.168.0/16"). The zone goes with link-local ones.
std::string destinationText(const Route& route, std::string_view zone);

/// The routes for a human or the VPN detection: both families, every table. Policy tables belong to it, since that is
/// where VPNs put their routes (WireGuard's default, Tailscale's peers). Those to the machine's own addresses don't: no
/// packet takes them, and a tunnel would seem to lead somewhere. Links go by their toolName.
std::string listAllRoutes(std::span<const Route> routes, std::span<const Link> links,
                          std::span<const InterfaceAddress> addresses);

/// The routes that say who the router is, for one family: those of the main table, since a policy table's gateway
/// serves some traffic only. If the main table has no default route, all tables count. By metric, links by their own
/// names.
std::string listRouterRoutes(int family, std::span<const Route> routes, std::span<const Link> links);

} // namespace tolvo::tools
