#pragma once

#include "platform/services/address_parsing.h"
#include "probes/command_running.h"
#include "probes/ip_address_validity.h"
#include "probes/ping_probe_running.h"
#include "probes/ping_summary_parser.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tolvo {

/// Pings with the system's ping, and finds the router with ipconfig and netstat.
class CommandLinePingProbeRunner final : public PingProbeRunning {
public:
    struct Configuration {
        /// Echo requests a probe, a second apart.
        std::int64_t pingPacketCount = 2;
        /// Seconds that the whole command gets beyond what its requests need.
        double commandTimeoutGracePeriod = 0.5;
    };
    /// The Wi-Fi interface, whose router goes before any other's.
    using InterfaceNameProvider = std::function<std::optional<std::string>()>;

    CommandLinePingProbeRunner(CommandRunning& commandRunner, const RegularExpressionCompiling& compiler,
                               const AddressParsing& addressParser, Configuration configuration,
                               InterfaceNameProvider wifiInterfaceNameProvider);

    Task<std::optional<std::string>> routerIPAddress(double timeout) override;
    Task<PingProbeMeasurement> ping(std::string host, double timeout) override;

private:
    CommandRequest pingCommand(std::string host, double timeout) const;
    Task<std::optional<std::string>> routerByDHCPOption(std::string interfaceName, double timeout);
    Task<std::optional<std::string>> defaultRouter(AddressFamily family, std::optional<std::string> preferredInterface,
                                                   double timeout);

    CommandRunning& commandRunner_;
    const AddressParsing& addressParser_;
    Configuration configuration_;
    InterfaceNameProvider wifiInterfaceNameProvider_;
    PingSummaryParser summaryParser_;
};

} // namespace tolvo
