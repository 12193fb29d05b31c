#pragma once

#include "export/diagnostics_export_input.h"

namespace tolvo::testing {

/// 2026-01-31 09:30:05.9 UTC.
inline WallTime exportDate() {
    using namespace std::chrono_literals;
    return std::chrono::sys_days(std::chrono::January / 31 / 2026) + 9h + 30min + 5900ms;
}

/// Everything that a report can hold, with texts and numbers at the ends of what may come.
inline DiagnosticsExportInput fullInput() {
    const WallTime date = exportDate();
    DiagnosticsExportInput input;
    input.exportedAt = date;
    input.appVersion = "0.1";
    input.appBuild = "7";
    input.monitoringEnabled = true;
    input.batteryFriendlyModeEnabled = true;
    input.diagnosticsSnapshot = DiagnosticsSnapshot{
        date,
        WiFiSnapshot{date, "wlan0", "caf\xc3\xa9 \"\x01\"\xe2\x80\xae", "02:00:00:00:00:01", -50, -95, 45, 866, 36,
                     WiFiBand::FiveGigahertz, "192.0.2.7", true},
        PingResult{PingTarget::Router, date, std::nullopt, std::nullopt, 100, false},
        PingResult{PingTarget::Internet, date, 12.25, 5e-324, 0, true},
        DNSResult{"example.org", date, 0, true},
        HealthState::Poor,
    };
    input.connectionResult = ConnectionPressureResult{date, {3, 4, 5}, SignalQuality::Good};
    input.connectionLastErrorMessage = "Connection monitor failed to read TCP states.";
    input.captivePortalStatus =
        CaptivePortalStatus{date, true, URL::parse("http://portal.example/login"), URL::parse("http://probe.example/"),
                            CaptivePortalDetectionReason::Redirect};
    input.speedTestResult = SpeedTestResult{
        date, 94.5, 1.7976931348623157e308, 10, 20, 30, 2, 3, BufferbloatGrade::B, BufferbloatGrade::F, true};
    input.speedTestPhase = SpeedTestPhase::Completed;
    input.channelScanResult =
        ChannelScanResult{date, 3, 12, {}, 36, WiFiBand::FiveGigahertz, 0.1, 40, WiFiBand::FiveGigahertz, true};
    return input;
}

} // namespace tolvo::testing
