#pragma once

#include "core/model/captive_portal_status.h"
#include "core/model/health_state.h"
#include "core/model/raw_value.h"
#include "core/model/signal_quality.h"
#include "core/model/speed_test_result.h"
#include "core/model/wall_time.h"
#include "core/model/wifi_band.h"
#include "export/diagnostics_export_input.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

/// The report as a record: a frozen picture of the latest results of all monitors and tests. What is absent here is
/// left out of the document. docs/diagnostics-report.schema.json describes the document.
struct DiagnosticsExportReport {
    enum class SectionStatus { Available, Unavailable };

    /// A section's data, if there is any, and its monitor's message. A section can have both.
    template<class Data>
    struct SectionEnvelope {
        std::optional<std::string> errorMessage;
        std::optional<Data> data;

        /// Follows from the data alone: a measurement that failed is available too.
        SectionStatus status() const { return data ? SectionStatus::Available : SectionStatus::Unavailable; }
        bool operator==(const SectionEnvelope&) const = default;
    };

    struct AppSection {
        std::string name = "Tolvo";
        std::optional<std::string> version;
        std::optional<std::string> build;
        bool operator==(const AppSection&) const = default;
    };

    struct RuntimeSection {
        bool monitoringEnabled = false;
        bool batteryFriendlyModeEnabled = false;
        HealthState healthState = HealthState::Disconnected;
        std::optional<WallTime> diagnosticsCapturedAt;
        bool operator==(const RuntimeSection&) const = default;
    };

    struct WiFiData {
        WallTime capturedAt;
        std::optional<std::string> ssid;
        std::optional<std::string> bssid;
        std::int64_t rssiDbm = 0;
        std::int64_t noiseFloorDbm = 0;
        std::optional<std::int64_t> snrDb;
        std::optional<std::int64_t> linkRateMbps;
        std::optional<std::int64_t> channelNumber;
        std::optional<WiFiBand> band;
        std::optional<std::string> ipAddress;
        bool vpnActive = false;
        bool operator==(const WiFiData&) const = default;
    };

    struct PingMetric {
        WallTime capturedAt;
        std::optional<double> latencyMilliseconds;
        std::optional<double> jitterMilliseconds;
        double packetLossPercent = 0;
        bool didSucceed = false;
        bool operator==(const PingMetric&) const = default;
    };

    struct DNSMetric {
        WallTime capturedAt;
        std::string domain;
        std::optional<double> latencyMilliseconds;
        bool didSucceed = false;
        bool operator==(const DNSMetric&) const = default;
    };

    struct LatencySection {
        SectionEnvelope<PingMetric> routerPing;
        SectionEnvelope<PingMetric> internetPing;
        SectionEnvelope<DNSMetric> dnsLookup;
        bool operator==(const LatencySection&) const = default;
    };

    struct ConnectionPressureData {
        WallTime capturedAt;
        SignalQuality quality = SignalQuality::Poor;
        std::int64_t establishedCount = 0;
        std::int64_t timeWaitCount = 0;
        std::int64_t closeWaitCount = 0;
        std::int64_t totalCount = 0;
        std::int64_t orphanedCount = 0;
        bool operator==(const ConnectionPressureData&) const = default;
    };

    struct CaptivePortalData {
        WallTime capturedAt;
        bool isCaptivePortal = false;
        CaptivePortalDetectionReason reason = CaptivePortalDetectionReason::None;
        std::optional<std::string> portalURL;
        std::optional<std::string> probeURL;
        bool operator==(const CaptivePortalData&) const = default;
    };

    struct SpeedTestData {
        WallTime capturedAt;
        double downloadMbps = 0;
        double uploadMbps = 0;
        std::optional<double> baselineLatencyMilliseconds;
        std::optional<double> downloadLoadedLatencyMilliseconds;
        std::optional<double> uploadLoadedLatencyMilliseconds;
        std::optional<BufferbloatGrade> downloadBufferbloatGrade;
        std::optional<BufferbloatGrade> uploadBufferbloatGrade;
        bool didSucceed = false;
        bool operator==(const SpeedTestData&) const = default;
    };

    /// A section with the test's phase beside it.
    struct SpeedTestSection : SectionEnvelope<SpeedTestData> {
        SpeedTestPhase phase = SpeedTestPhase::Idle;
        bool operator==(const SpeedTestSection&) const = default;
    };

    struct ChannelScanData {
        WallTime capturedAt;
        std::int64_t passCount = 0;
        std::int64_t scannedNetworkCount = 0;
        std::optional<std::int64_t> currentChannelNumber;
        std::optional<WiFiBand> currentBand;
        std::optional<double> currentChannelInterferenceScore;
        std::optional<std::int64_t> suggestedChannelNumber;
        std::optional<WiFiBand> suggestedBand;
        bool didSucceed = false;
        bool operator==(const ChannelScanData&) const = default;
    };

    std::int64_t schemaVersion = 2;
    WallTime exportedAt;
    AppSection app;
    RuntimeSection runtime;
    SectionEnvelope<WiFiData> wifi;
    LatencySection latency;
    SectionEnvelope<ConnectionPressureData> connectionPressure;
    SectionEnvelope<CaptivePortalData> captivePortal;
    SpeedTestSection speedTest;
    SectionEnvelope<ChannelScanData> channelScan;

    bool operator==(const DiagnosticsExportReport&) const = default;
};

template<>
inline constexpr RawValueTable<DiagnosticsExportReport::SectionStatus, 2>
    rawValueTable<DiagnosticsExportReport::SectionStatus>{{
        {DiagnosticsExportReport::SectionStatus::Available, "available"},
        {DiagnosticsExportReport::SectionStatus::Unavailable, "unavailable"},
    }};

DiagnosticsExportReport makeDiagnosticsExportReport(const DiagnosticsExportInput& input);

} // namespace tolvo
