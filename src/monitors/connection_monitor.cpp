#include "monitors/connection_monitor.h"

#include "core/sample_history.h"

#include <utility>

namespace tolvo {

namespace {

// The two pairs differ in form: these are the first counts of the warning, and the last ones before poor.
constexpr std::int64_t warningTotal = 500;
constexpr std::int64_t warningOrphaned = 200;
constexpr std::int64_t lastWarningTotal = 800;
constexpr std::int64_t lastWarningOrphaned = 400;

SignalQuality pressureQuality(const TCPConnectionStateCounts& counts) {
    if (counts.totalCount() > lastWarningTotal || counts.orphanedCount() > lastWarningOrphaned)
        return SignalQuality::Poor;
    if (counts.totalCount() >= warningTotal || counts.orphanedCount() >= warningOrphaned)
        return SignalQuality::Warning;
    return SignalQuality::Good;
}

} // namespace

ConnectionMonitor::ConnectionMonitor(MainLoop& loop, Configuration configuration,
                                     TCPConnectionCounting& connectionCounter, SleepProviding& sleeper,
                                     DateProvider dateProvider)
    : PolledMonitor(loop, sleeper, configuration.pollInterval),
      maxHistorySampleCount_(configuration.maxHistorySampleCount),
      commandTimeout_(configuration.commandTimeout),
      connectionCounter_(connectionCounter),
      dateProvider_(std::move(dateProvider)) {}

void ConnectionMonitor::resetTransientState() {
    latestResult.set(std::nullopt);
    history.set({});
    connectionQuality.set(SignalQuality::Poor);
    lastErrorMessage.set(std::nullopt);
}

Task<void> ConnectionMonitor::poll() {
    const std::optional<TCPConnectionStateCounts> counts =
        co_await connectionCounter_.connectionCounts(commandTimeout_);
    if (!counts) {
        lastErrorMessage.set("Connection monitor failed to read TCP states.");
        co_return;
    }
    const SignalQuality quality = pressureQuality(*counts);
    const ConnectionPressureResult result{dateProvider_(), *counts, quality};
    latestResult.set(result);
    connectionQuality.set(quality);
    appendSample(history, result, maxHistorySampleCount_);
    lastErrorMessage.set(std::nullopt);
}

} // namespace tolvo
