#pragma once

#include "tools/link_table.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo::tools {

enum class VPNServiceState { Connecting, Connected, Disconnecting, Disconnected };

/// One VPN that something on this machine manages.
struct VPNService {
    std::string identifier;
    std::string name;
    /// "vpn" or "wireguard"
    std::string type;
    VPNServiceState state = VPNServiceState::Disconnected;

    bool operator==(const VPNService&) const = default;
};

/// A WireGuard link that is up is a connected service, whoever made it: the protocol knows no connecting.
std::vector<VPNService> wireGuardServices(std::span<const Link> links);

/// One line a service: state, identifier, type and name.
std::string listServices(std::span<const VPNService> services);

} // namespace tolvo::tools
