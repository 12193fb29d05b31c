#include "probes/command_line_dns_lookup_runner.h"

#include "probes/command_output.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace tolvo {

namespace {

/// dig takes whole seconds only, so the runner's time-out, which is exact, comes first.
std::string wholeSeconds(double timeout) {
    const double limit = std::numeric_limits<std::int32_t>::max();
    return std::to_string(std::llround(std::clamp(std::ceil(timeout), 1.0, limit)));
}

} // namespace

CommandLineDNSLookupRunner::CommandLineDNSLookupRunner(CommandRunning& commandRunner,
                                                       const RegularExpressionCompiling& compiler)
    : commandRunner_(commandRunner), parser_(compiler) {}

Task<std::optional<double>> CommandLineDNSLookupRunner::queryTime(std::string domain, double timeout) {
    const CommandOutcome outcome = co_await commandRunner_.run(
        CommandRequest{"/usr/bin/dig", {"+time=" + wholeSeconds(timeout), "+tries=1", std::move(domain)}, timeout});
    const auto output = outputOfAnyExit(outcome);
    if (!output)
        co_return std::nullopt;
    const auto milliseconds = parser_.queryTime(*output);
    co_return milliseconds ? std::optional(*milliseconds) : std::nullopt;
}

} // namespace tolvo
