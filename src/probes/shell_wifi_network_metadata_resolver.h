#pragma once

#include "platform/services/address_parsing.h"
#include "probes/command_running.h"
#include "probes/vpn_tunnel_interfaces.h"
#include "probes/wifi_network_metadata_resolving.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Finds an interface's address and the VPN's state with the system's tools. Each call asks anew.
class ShellWiFiNetworkMetadataResolver final : public WiFiNetworkMetadataResolving {
public:
    /// The time-out, in seconds, is each tool's.
    ShellWiFiNetworkMetadataResolver(CommandRunning& commandRunner, const RegularExpressionCompiling& compiler,
                                     const AddressParsing& addressParser, double commandTimeout);

    Task<std::optional<std::string>> resolveIPAddress(std::string interfaceName) override;
    /// Runs its three tools at the same time.
    Task<bool> isVPNActive() override;

private:
    Task<CommandOutcome> run(std::string executable, std::vector<std::string> arguments);

    CommandRunning& commandRunner_;
    const AddressParsing& addressParser_;
    double commandTimeout_;
    VPNTunnelInterfaceParser tunnelParser_;
};

} // namespace tolvo
