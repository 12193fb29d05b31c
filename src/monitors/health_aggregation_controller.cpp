#include "monitors/health_aggregation_controller.h"

#include <utility>

namespace tolvo {

HealthAggregationController::HealthAggregationController(MainLoop& loop, HealthSources sources,
                                                         DateProvider dateProvider)
    : sources_(sources), dateProvider_(std::move(dateProvider)), tasks_(loop) {
    subscriptions_ = {
        rebuildOnChange(sources_.isMonitoringEnabled), rebuildOnChange(sources_.isConnected),
        rebuildOnChange(sources_.latestSnapshot),      rebuildOnChange(sources_.routerResult),
        rebuildOnChange(sources_.internetResult),      rebuildOnChange(sources_.isRouterIgnored),
        rebuildOnChange(sources_.latestDNSResult),
    };
    rebuildSnapshot();
}

// A subscriber is told before the value is stored, so the rebuild waits for a later turn and reads all sources afresh.
template<class T>
Subscription HealthAggregationController::rebuildOnChange(Published<T>& source) {
    return source.subscribe([this](const T&) { tasks_.start(rebuildLater()); });
}

Task<void> HealthAggregationController::rebuildLater() {
    rebuildSnapshot();
    co_return;
}

HealthReadings HealthAggregationController::currentReadings() const {
    return HealthReadings{
        .isMonitoringEnabled = sources_.isMonitoringEnabled.value(),
        .isConnected = sources_.isConnected.value(),
        .wifiSnapshot = sources_.latestSnapshot.value(),
        .routerPingResult = sources_.routerResult.value(),
        .internetPingResult = sources_.internetResult.value(),
        .dnsResult = sources_.latestDNSResult.value(),
        .isRouterIgnored = sources_.isRouterIgnored.value(),
    };
}

void HealthAggregationController::rebuildSnapshot() {
    HealthReadings readings = currentReadings();
    const HealthState state = overallHealth(readings);
    healthState.set(state);
    latestDiagnosticsSnapshot.set(DiagnosticsSnapshot{
        .timestamp = dateProvider_(),
        .wifiSnapshot = std::move(readings.wifiSnapshot),
        .routerPingResult = readings.routerPingResult,
        .internetPingResult = readings.internetPingResult,
        .dnsResult = std::move(readings.dnsResult),
        .healthState = state,
    });
}

} // namespace tolvo
