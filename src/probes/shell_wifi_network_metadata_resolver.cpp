#include "probes/shell_wifi_network_metadata_resolver.h"

#include "core/async/when_all.h"
#include "probes/command_output.h"
#include "probes/ipconfig_parser.h"
#include "probes/vpn_activity.h"

#include <utility>

namespace tolvo {

ShellWiFiNetworkMetadataResolver::ShellWiFiNetworkMetadataResolver(CommandRunning& commandRunner,
                                                                   const RegularExpressionCompiling& compiler,
                                                                   const AddressParsing& addressParser,
                                                                   double commandTimeout)
    : commandRunner_(commandRunner),
      addressParser_(addressParser),
      commandTimeout_(commandTimeout),
      tunnelParser_(compiler) {}

Task<CommandOutcome> ShellWiFiNetworkMetadataResolver::run(std::string executable, std::vector<std::string> arguments) {
    return commandRunner_.run(CommandRequest{std::move(executable), std::move(arguments), commandTimeout_});
}

Task<std::optional<std::string>> ShellWiFiNetworkMetadataResolver::resolveIPAddress(std::string interfaceName) {
    const CommandOutcome outcome = co_await run("/usr/sbin/ipconfig", {"getifaddr", std::move(interfaceName)});
    const auto output = outputOfSuccess(outcome);
    if (!output)
        co_return std::nullopt;
    auto address = parseIPConfigAddress(*output);
    co_return address ? std::optional(std::move(*address)) : std::nullopt;
}

Task<bool> ShellWiFiNetworkMetadataResolver::isVPNActive() {
    const auto [services, interfaces, routes] = co_await whenAll(
        run("/usr/sbin/scutil", {"--nc", "list"}), run("/sbin/ifconfig", {}), run("/usr/sbin/netstat", {"-rn"}));
    co_return evaluateVPNActivity(parseVPNConnectionServices(outputOfSuccess(services).value_or("")),
                                  tunnelParser_.parseVPNTunnelInterfaces(outputOfSuccess(interfaces).value_or("")),
                                  parseVPNRoutes(outputOfSuccess(routes).value_or("")), addressParser_);
}

} // namespace tolvo
