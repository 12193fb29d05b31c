#pragma once

#include "core/async/published.h"
#include "core/model/captive_portal_status.h"
#include "core/model/channel_scan_result.h"
#include "core/model/connection_pressure_result.h"
#include "core/model/diagnostics_snapshot.h"
#include "core/model/speed_test_result.h"

#include <functional>
#include <optional>
#include <string>

namespace tolvo {

/// A test that runs when asked, as far as a collection has to do with it.
struct OnDemandTest {
    Published<bool>& isRunning;
    Published<std::optional<std::string>>& lastErrorMessage;
    std::function<void()> start;
    std::function<void()> cancel;
};

/// What a report is collected from. What the references belong to outlives the collection.
struct DiagnosticsCollectionSources {
    /// The program's version and build, as far as they are known.
    std::optional<std::string> appVersion;
    std::optional<std::string> appBuild;

    Published<bool>& isMonitoringEnabled;
    Published<bool>& isBatteryFriendly;
    Published<std::optional<DiagnosticsSnapshot>>& latestDiagnosticsSnapshot;
    Published<std::optional<ConnectionPressureResult>>& connectionResult;
    Published<std::optional<std::string>>& connectionErrorMessage;
    Published<std::optional<CaptivePortalStatus>>& captivePortalStatus;
    Published<std::optional<std::string>>& captivePortalErrorMessage;

    OnDemandTest channelScan;
    Published<std::optional<ChannelScanResult>>& channelScanResult;
    OnDemandTest speedTest;
    Published<std::optional<SpeedTestResult>>& speedTestResult;
    Published<SpeedTestPhase>& speedTestPhase;
};

} // namespace tolvo
