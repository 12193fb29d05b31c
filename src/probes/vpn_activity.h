#pragma once

#include "platform/services/address_parsing.h"
#include "probes/vpn_connection_services.h"
#include "probes/vpn_routes.h"
#include "probes/vpn_tunnel_interfaces.h"

#include <string_view>
#include <vector>

namespace tolvo {

/// Whether a route to this destination sends particular networks through a tunnel, as a VPN does and a tunnel that
/// merely exists doesn't. Default routes, both halves of one, loopback, link-local and multicast don't count.
bool isSpecificRoute(std::string_view destination, const AddressParsing& addressParser);

/// Whether a VPN is up: a connected service is enough. A tunnel interface, which exists for many other reasons, has to
/// be up and to have a usable address; the kinds that VPNs share with other uses, and those with IPv6 alone, also need
/// a specific route.
bool evaluateVPNActivity(const std::vector<VPNConnectionServiceStatus>& services,
                         const std::vector<VPNTunnelInterfaceStatus>& tunnels, const std::vector<VPNRouteEntry>& routes,
                         const AddressParsing& addressParser);

} // namespace tolvo
