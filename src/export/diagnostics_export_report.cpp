#include "export/diagnostics_export_report.h"

namespace tolvo {

namespace {

using Report = DiagnosticsExportReport;

std::optional<std::string> textOf(const std::optional<URL>& url) {
    return url ? std::optional(url->text()) : std::nullopt;
}

Report::WiFiData dataOf(const WiFiSnapshot& snapshot) {
    return {
        .capturedAt = snapshot.timestamp,
        .ssid = snapshot.ssid,
        .bssid = snapshot.bssid,
        .rssiDbm = snapshot.rssiDbm,
        .noiseFloorDbm = snapshot.noiseFloorDbm,
        .snrDb = snapshot.snrDb,
        .linkRateMbps = snapshot.linkRateMbps,
        .channelNumber = snapshot.channelNumber,
        .band = snapshot.band,
        .ipAddress = snapshot.ipAddress,
        .vpnActive = snapshot.isVPNActive,
    };
}

Report::PingMetric dataOf(const PingResult& result) {
    return {
        .capturedAt = result.timestamp,
        .latencyMilliseconds = result.latencyMilliseconds,
        .jitterMilliseconds = result.jitterMilliseconds,
        .packetLossPercent = result.packetLossPercent,
        .didSucceed = result.didSucceed,
    };
}

Report::DNSMetric dataOf(const DNSResult& result) {
    return {
        .capturedAt = result.timestamp,
        .domain = result.domain,
        .latencyMilliseconds = result.latencyMilliseconds,
        .didSucceed = result.didSucceed,
    };
}

Report::ConnectionPressureData dataOf(const ConnectionPressureResult& result) {
    return {
        .capturedAt = result.timestamp,
        .quality = result.quality,
        .establishedCount = result.counts.established,
        .timeWaitCount = result.counts.timeWait,
        .closeWaitCount = result.counts.closeWait,
        .totalCount = result.counts.totalCount(),
        .orphanedCount = result.counts.orphanedCount(),
    };
}

Report::CaptivePortalData dataOf(const CaptivePortalStatus& status) {
    return {
        .capturedAt = status.timestamp,
        .isCaptivePortal = status.isCaptivePortal,
        .reason = status.reason,
        .portalURL = textOf(status.portalURL),
        .probeURL = textOf(status.probeURL),
    };
}

Report::SpeedTestData dataOf(const SpeedTestResult& result) {
    return {
        .capturedAt = result.timestamp,
        .downloadMbps = result.downloadMbps,
        .uploadMbps = result.uploadMbps,
        .baselineLatencyMilliseconds = result.baselineLatencyMilliseconds,
        .downloadLoadedLatencyMilliseconds = result.downloadLoadedLatencyMilliseconds,
        .uploadLoadedLatencyMilliseconds = result.uploadLoadedLatencyMilliseconds,
        .downloadBufferbloatGrade = result.downloadBufferbloatGrade,
        .uploadBufferbloatGrade = result.uploadBufferbloatGrade,
        .didSucceed = result.didSucceed,
    };
}

Report::ChannelScanData dataOf(const ChannelScanResult& result) {
    return {
        .capturedAt = result.timestamp,
        .passCount = result.passCount,
        .scannedNetworkCount = result.scannedNetworkCount,
        .currentChannelNumber = result.currentChannelNumber,
        .currentBand = result.currentBand,
        .currentChannelInterferenceScore = result.currentChannelInterferenceScore,
        .suggestedChannelNumber = result.suggestedChannelNumber,
        .suggestedBand = result.suggestedBand,
        .didSucceed = result.didSucceed,
    };
}

template<class Data, class Source>
void fill(Report::SectionEnvelope<Data>& section, const std::optional<Source>& source,
          std::optional<std::string> errorMessage = std::nullopt) {
    section.errorMessage = std::move(errorMessage);
    if (source)
        section.data = dataOf(*source);
}

void fillFromSnapshot(Report& report, const DiagnosticsSnapshot& snapshot) {
    report.runtime.healthState = snapshot.healthState;
    report.runtime.diagnosticsCapturedAt = snapshot.timestamp;
    fill(report.wifi, snapshot.wifiSnapshot);
    fill(report.latency.routerPing, snapshot.routerPingResult);
    fill(report.latency.internetPing, snapshot.internetPingResult);
    fill(report.latency.dnsLookup, snapshot.dnsResult);
}

} // namespace

DiagnosticsExportReport makeDiagnosticsExportReport(const DiagnosticsExportInput& input) {
    Report report;
    report.exportedAt = input.exportedAt;
    report.app.version = input.appVersion;
    report.app.build = input.appBuild;
    report.runtime.monitoringEnabled = input.monitoringEnabled;
    report.runtime.batteryFriendlyModeEnabled = input.batteryFriendlyModeEnabled;
    if (input.diagnosticsSnapshot)
        fillFromSnapshot(report, *input.diagnosticsSnapshot);
    fill(report.connectionPressure, input.connectionResult, input.connectionLastErrorMessage);
    fill(report.captivePortal, input.captivePortalStatus, input.captivePortalLastErrorMessage);
    report.speedTest.phase = input.speedTestPhase;
    fill(report.speedTest, input.speedTestResult, input.speedTestLastErrorMessage);
    fill(report.channelScan, input.channelScanResult, input.channelScanLastErrorMessage);
    return report;
}

} // namespace tolvo
