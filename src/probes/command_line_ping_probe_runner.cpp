#include "probes/command_line_ping_probe_runner.h"

#include "probes/command_output.h"
#include "probes/default_route_parser.h"
#include "probes/ipconfig_parser.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tolvo {

namespace {

/// As ping reads it: a positive count that fits a C int.
std::string waitMilliseconds(double seconds) {
    const double limit = std::numeric_limits<std::int32_t>::max();
    return std::to_string(std::llround(std::clamp(seconds * 1000, 1.0, limit)));
}

std::optional<std::string> valueOf(std::expected<std::string, CommandParsingError> parsed) {
    return parsed ? std::optional(std::move(*parsed)) : std::nullopt;
}

} // namespace

CommandLinePingProbeRunner::CommandLinePingProbeRunner(CommandRunning& commandRunner,
                                                       const RegularExpressionCompiling& compiler,
                                                       const AddressParsing& addressParser, Configuration configuration,
                                                       InterfaceNameProvider wifiInterfaceNameProvider)
    : commandRunner_(commandRunner),
      addressParser_(addressParser),
      configuration_(configuration),
      wifiInterfaceNameProvider_(std::move(wifiInterfaceNameProvider)),
      summaryParser_(compiler) {}

CommandRequest CommandLinePingProbeRunner::pingCommand(std::string host, double timeout) const {
    const double wait = timeout > 0.001 ? timeout : 0.001;
    const auto count = static_cast<double>(std::max<std::int64_t>(configuration_.pingPacketCount, 1));
    const double commandTimeout = wait * count + (count - 1) + std::max(configuration_.commandTimeoutGracePeriod, 0.0);
    const std::string countText = std::to_string(configuration_.pingPacketCount);
    if (host.contains(':'))
        return {"/sbin/ping6", {"-c", countText, std::move(host)}, commandTimeout};
    return {"/sbin/ping", {"-c", countText, "-W", waitMilliseconds(wait), std::move(host)}, commandTimeout};
}

Task<PingProbeMeasurement> CommandLinePingProbeRunner::ping(std::string host, double timeout) {
    // Ping ends with a status of its own when replies are missing, and prints its statistics all the same.
    const CommandOutcome outcome = co_await commandRunner_.run(pingCommand(std::move(host), timeout));
    const auto output = outputOfAnyExit(outcome);
    co_return output ? summaryParser_.measurement(*output) : PingProbeMeasurement{};
}

Task<std::optional<std::string>> CommandLinePingProbeRunner::routerIPAddress(double timeout) {
    if (const auto interfaceName = wifiInterfaceNameProvider_()) {
        if (auto router = co_await routerByDHCPOption(*interfaceName, timeout))
            co_return router;
        if (auto router = co_await defaultRouter(AddressFamily::IPv6, interfaceName, timeout))
            co_return router;
    }
    if (auto router = co_await defaultRouter(AddressFamily::IPv4, std::nullopt, timeout))
        co_return router;
    co_return co_await defaultRouter(AddressFamily::IPv6, std::nullopt, timeout);
}

Task<std::optional<std::string>> CommandLinePingProbeRunner::routerByDHCPOption(std::string interfaceName,
                                                                                double timeout) {
    const CommandOutcome outcome = co_await commandRunner_.run(
        CommandRequest{"/usr/sbin/ipconfig", {"getoption", std::move(interfaceName), "router"}, timeout});
    const auto output = outputOfSuccess(outcome);
    co_return output ? valueOf(parseIPConfigAddress(*output)) : std::nullopt;
}

Task<std::optional<std::string>>
CommandLinePingProbeRunner::defaultRouter(AddressFamily family, std::optional<std::string> preferredInterface,
                                          double timeout) {
    const std::string familyName = family == AddressFamily::IPv4 ? "inet" : "inet6";
    const CommandOutcome outcome =
        co_await commandRunner_.run(CommandRequest{"/usr/sbin/netstat", {"-rn", "-f", familyName}, timeout});
    const auto output = outputOfSuccess(outcome);
    if (!output)
        co_return std::nullopt;
    co_return valueOf(parseDefaultRoute(*output, family, preferredInterface, addressParser_));
}

} // namespace tolvo
