#pragma once

#include "core/model/captive_portal_status.h"
#include "core/model/channel_scan_result.h"
#include "core/model/connection_pressure_result.h"
#include "core/model/diagnostics_snapshot.h"
#include "core/model/speed_test_result.h"
#include "core/model/wall_time.h"

#include <optional>
#include <string>

namespace tolvo {

/// All that the report is made of, at the moment at which it is made.
struct DiagnosticsExportInput {
    WallTime exportedAt;
    std::optional<std::string> appVersion;
    std::optional<std::string> appBuild;
    bool monitoringEnabled = false;
    bool batteryFriendlyModeEnabled = false;
    std::optional<DiagnosticsSnapshot> diagnosticsSnapshot;
    std::optional<ConnectionPressureResult> connectionResult;
    std::optional<std::string> connectionLastErrorMessage;
    std::optional<CaptivePortalStatus> captivePortalStatus;
    std::optional<std::string> captivePortalLastErrorMessage;
    std::optional<SpeedTestResult> speedTestResult;
    SpeedTestPhase speedTestPhase = SpeedTestPhase::Idle;
    std::optional<std::string> speedTestLastErrorMessage;
    std::optional<ChannelScanResult> channelScanResult;
    std::optional<std::string> channelScanLastErrorMessage;
};

} // namespace tolvo
