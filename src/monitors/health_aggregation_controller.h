#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/diagnostics_snapshot.h"
#include "core/model/health_state.h"
#include "core/model/wall_time.h"
#include "monitors/health_grading.h"

#include <array>
#include <optional>

namespace tolvo {

/// The published values that the overall health follows.
struct HealthSources {
    Published<bool>& isMonitoringEnabled;
    Published<bool>& isConnected;
    Published<std::optional<WiFiSnapshot>>& latestSnapshot;
    Published<std::optional<PingResult>>& routerResult;
    Published<std::optional<PingResult>>& internetResult;
    Published<bool>& isRouterIgnored;
    Published<std::optional<DNSResult>>& latestDNSResult;
};

/// Turns the separate measurements into one state and one combined snapshot, again at each change of a source, also
/// when the outcome is the same. Main thread only.
class HealthAggregationController final {
public:
    HealthAggregationController(MainLoop& loop, HealthSources sources, DateProvider dateProvider);

    Published<HealthState> healthState{HealthState::Disconnected};
    Published<std::optional<DiagnosticsSnapshot>> latestDiagnosticsSnapshot;

private:
    template<class T>
    Subscription rebuildOnChange(Published<T>& source);
    Task<void> rebuildLater();
    void rebuildSnapshot();
    HealthReadings currentReadings() const;

    const HealthSources sources_;
    const DateProvider dateProvider_;
    std::array<Subscription, 7> subscriptions_;
    TaskScope tasks_;
};

} // namespace tolvo
