#include "monitors/ping_monitor.h"

#include "core/async/when_all.h"
#include "core/sample_history.h"
#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

PingResult pingResult(PingTarget target, WallTime timestamp, const PingProbeMeasurement& measurement) {
    return {target,
            timestamp,
            measurement.latencyMilliseconds,
            measurement.jitterMilliseconds,
            measurement.packetLossPercent,
            measurement.didSucceed};
}

} // namespace

PingMonitor::PingMonitor(MainLoop& loop, Configuration configuration, PingProbeRunning& pingProbeRunner,
                         SleepProviding& sleeper, DateProvider dateProvider)
    : PolledMonitor(loop, sleeper, configuration.pollInterval),
      configuration_(std::move(configuration)),
      pingProbeRunner_(pingProbeRunner),
      dateProvider_(std::move(dateProvider)) {}

void PingMonitor::resetTransientState() {
    routerIPAddress.set(std::nullopt);
    routerResult.set(std::nullopt);
    internetResult.set(std::nullopt);
    routerHistory.set({});
    internetHistory.set({});
    countRouterAgain();
}

void PingMonitor::updateInternetTarget(std::string_view target) {
    const std::string_view newTarget = trimmed(target);
    if (!newTarget.empty())
        configuration_.internetTarget = newTarget;
}

Task<void> PingMonitor::poll() {
    const WallTime now = dateProvider_();
    std::optional<std::string> router = co_await pingProbeRunner_.routerIPAddress(configuration_.commandTimeout);
    routerIPAddress.set(router);
    if (router)
        co_await pollWithRouter(now, std::move(*router));
    else
        co_await pollWithoutRouter(now);
}

Task<void> PingMonitor::pollWithoutRouter(WallTime now) {
    const PingProbeMeasurement measurement =
        co_await pingProbeRunner_.ping(configuration_.internetTarget, configuration_.commandTimeout);
    const PingResult internet = pingResult(PingTarget::Internet, now, measurement);
    routerResult.set(std::nullopt);
    internetResult.set(internet);
    appendSample(internetHistory, internet, configuration_.maxHistorySampleCount);
    countRouterAgain();
}

Task<void> PingMonitor::pollWithRouter(WallTime now, std::string router) {
    const auto [routerMeasurement, internetMeasurement] =
        co_await whenAll(pingProbeRunner_.ping(std::move(router), configuration_.commandTimeout),
                         pingProbeRunner_.ping(configuration_.internetTarget, configuration_.commandTimeout));
    const PingResult routerPing = pingResult(PingTarget::Router, now, routerMeasurement);
    const PingResult internetPing = pingResult(PingTarget::Internet, now, internetMeasurement);
    routerResult.set(routerPing);
    internetResult.set(internetPing);
    appendSample(routerHistory, routerPing, configuration_.maxHistorySampleCount);
    appendSample(internetHistory, internetPing, configuration_.maxHistorySampleCount);
    applyRouterIgnoreRule(routerPing.didSucceed, internetPing.didSucceed);
}

void PingMonitor::applyRouterIgnoreRule(bool didRouterSucceed, bool didInternetSucceed) {
    if (didRouterSucceed || !didInternetSucceed) {
        countRouterAgain();
        return;
    }
    ++consecutiveRouterFailuresWhileInternetSucceeds_;
    if (consecutiveRouterFailuresWhileInternetSucceeds_ >= configuration_.routerIgnoreFailureThreshold)
        isRouterIgnored.set(true);
}

void PingMonitor::countRouterAgain() {
    consecutiveRouterFailuresWhileInternetSucceeds_ = 0;
    isRouterIgnored.set(false);
}

} // namespace tolvo
