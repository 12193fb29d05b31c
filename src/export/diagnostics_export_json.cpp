#include "export/diagnostics_export_json.h"

namespace tolvo {

namespace {

using Report = DiagnosticsExportReport;

/// An object that leaves out what is absent and writes enumerations by their raw values.
class ObjectBuilder {
public:
    template<class T>
    ObjectBuilder& set(std::string_view key, const T& value) {
        if constexpr (std::is_enum_v<T>)
            object_.insert_or_assign(std::string(key), JSONValue(rawValue(value)));
        else
            object_.insert_or_assign(std::string(key), JSONValue(value));
        return *this;
    }
    template<class T>
    ObjectBuilder& set(std::string_view key, const std::optional<T>& value) {
        return value ? set(key, *value) : *this;
    }

    operator JSONObject() const { return object_; }

private:
    JSONObject object_;
};

JSONObject objectOf(const Report::AppSection& app) {
    return ObjectBuilder().set("name", app.name).set("version", app.version).set("build", app.build);
}

JSONObject objectOf(const Report::RuntimeSection& runtime) {
    return ObjectBuilder()
        .set("monitoringEnabled", runtime.monitoringEnabled)
        .set("batteryFriendlyModeEnabled", runtime.batteryFriendlyModeEnabled)
        .set("healthState", runtime.healthState)
        .set("diagnosticsCapturedAt", runtime.diagnosticsCapturedAt);
}

JSONObject objectOf(const Report::WiFiData& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("ssid", data.ssid)
        .set("bssid", data.bssid)
        .set("rssiDbm", data.rssiDbm)
        .set("noiseFloorDbm", data.noiseFloorDbm)
        .set("snrDb", data.snrDb)
        .set("linkRateMbps", data.linkRateMbps)
        .set("channelNumber", data.channelNumber)
        .set("band", data.band)
        .set("ipAddress", data.ipAddress)
        .set("vpnActive", data.vpnActive);
}

JSONObject objectOf(const Report::PingMetric& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("latencyMilliseconds", data.latencyMilliseconds)
        .set("jitterMilliseconds", data.jitterMilliseconds)
        .set("packetLossPercent", data.packetLossPercent)
        .set("didSucceed", data.didSucceed);
}

JSONObject objectOf(const Report::DNSMetric& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("domain", data.domain)
        .set("latencyMilliseconds", data.latencyMilliseconds)
        .set("didSucceed", data.didSucceed);
}

JSONObject objectOf(const Report::ConnectionPressureData& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("quality", data.quality)
        .set("establishedCount", data.establishedCount)
        .set("timeWaitCount", data.timeWaitCount)
        .set("closeWaitCount", data.closeWaitCount)
        .set("totalCount", data.totalCount)
        .set("orphanedCount", data.orphanedCount);
}

JSONObject objectOf(const Report::CaptivePortalData& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("isCaptivePortal", data.isCaptivePortal)
        .set("reason", data.reason)
        .set("portalURL", data.portalURL)
        .set("probeURL", data.probeURL);
}

JSONObject objectOf(const Report::SpeedTestData& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("downloadMbps", data.downloadMbps)
        .set("uploadMbps", data.uploadMbps)
        .set("baselineLatencyMilliseconds", data.baselineLatencyMilliseconds)
        .set("downloadLoadedLatencyMilliseconds", data.downloadLoadedLatencyMilliseconds)
        .set("uploadLoadedLatencyMilliseconds", data.uploadLoadedLatencyMilliseconds)
        .set("downloadBufferbloatGrade", data.downloadBufferbloatGrade)
        .set("uploadBufferbloatGrade", data.uploadBufferbloatGrade)
        .set("didSucceed", data.didSucceed);
}

JSONObject objectOf(const Report::ChannelScanData& data) {
    return ObjectBuilder()
        .set("capturedAt", data.capturedAt)
        .set("passCount", data.passCount)
        .set("scannedNetworkCount", data.scannedNetworkCount)
        .set("currentChannelNumber", data.currentChannelNumber)
        .set("currentBand", data.currentBand)
        .set("currentChannelInterferenceScore", data.currentChannelInterferenceScore)
        .set("suggestedChannelNumber", data.suggestedChannelNumber)
        .set("suggestedBand", data.suggestedBand)
        .set("didSucceed", data.didSucceed);
}

template<class Data>
ObjectBuilder envelope(const Report::SectionEnvelope<Data>& section) {
    const auto data = section.data ? std::optional(objectOf(*section.data)) : std::nullopt;
    return ObjectBuilder().set("status", section.status()).set("errorMessage", section.errorMessage).set("data", data);
}

JSONObject objectOf(const Report::LatencySection& latency) {
    return ObjectBuilder()
        .set("routerPing", JSONObject(envelope(latency.routerPing)))
        .set("internetPing", JSONObject(envelope(latency.internetPing)))
        .set("dnsLookup", JSONObject(envelope(latency.dnsLookup)));
}

JSONObject objectOf(const Report& report) {
    return ObjectBuilder()
        .set("schemaVersion", report.schemaVersion)
        .set("exportedAt", report.exportedAt)
        .set("app", objectOf(report.app))
        .set("runtime", objectOf(report.runtime))
        .set("wifi", JSONObject(envelope(report.wifi)))
        .set("latency", objectOf(report.latency))
        .set("connectionPressure", JSONObject(envelope(report.connectionPressure)))
        .set("captivePortal", JSONObject(envelope(report.captivePortal)))
        .set("speedTest", JSONObject(envelope(report.speedTest).set("phase", report.speedTest.phase)))
        .set("channelScan", JSONObject(envelope(report.channelScan)));
}

} // namespace

std::expected<std::string, JSONEncodingError> jsonString(const DiagnosticsExportReport& report) {
    return encodeJSON(objectOf(report), JSONLayout::Pretty);
}

} // namespace tolvo
