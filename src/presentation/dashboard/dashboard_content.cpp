#include "presentation/dashboard/dashboard_content.h"

#include <algorithm>
#include <array>

namespace tolvo {

namespace {

constexpr double highestLinkRateMbps = 1200;
constexpr double smallestLinkRateSpanMbps = 80;

/// A field of every history entry that has it.
template<class Entry, class Field>
std::vector<double> samplesOf(const std::vector<Entry>& history, Field field) {
    std::vector<double> samples;
    for (const Entry& entry : history) {
        if (const std::optional<double> value = field(entry))
            samples.push_back(*value);
    }
    return samples;
}

std::optional<double> asReal(std::optional<std::int64_t> value) {
    return value ? std::optional(static_cast<double>(*value)) : std::nullopt;
}

std::optional<std::string> idleMessage(const DashboardSources& sources) {
    if (!sources.isMonitoringEnabled.value())
        return "Monitoring is paused. Enable monitoring to collect live diagnostics.";
    if (!sources.isConnected.value())
        return "No Wi-Fi connection detected. Connect to a network to see diagnostics.";
    if (!sources.latestSnapshot.value())
        return "Connected. Waiting for the first Wi-Fi samples...";
    return std::nullopt;
}

std::optional<std::string> captivePortalMessage(const DashboardSources& sources) {
    const auto& status = sources.captivePortalStatus.value();
    if (!sources.isMonitoringEnabled.value() || !status || !status->isCaptivePortal)
        return std::nullopt;
    if (status->portalURL)
        return "Captive portal detected. Login may be required at " + status->portalURL->text() + ".";
    return "Captive portal detected. Login may be required before internet access works.";
}

std::vector<InlineMessageRow> messages(const DashboardSources& sources) {
    std::vector<InlineMessageRow> rows;
    if (!sources.isMonitoringEnabled.value())
        rows.push_back({sources.statusMessage(), Tone::Orange});
    else if (auto idle = idleMessage(sources))
        rows.push_back({std::move(*idle), Tone::Secondary});
    if (auto portal = captivePortalMessage(sources))
        rows.push_back({std::move(*portal), Tone::Red});
    return rows;
}

WiFiNetworkHeader networkHeader(const DashboardSources& sources) {
    const auto& snapshot = sources.latestSnapshot.value();
    WiFiNetworkHeader header{"Wi-Fi Name Unavailable", sources.isConnected.value(), std::nullopt,
                             "Channel unavailable"};
    if (!snapshot)
        return header;
    if (snapshot->ssid && !snapshot->ssid->empty())
        header.name = *snapshot->ssid;
    if (snapshot->band)
        header.band = rawValue(*snapshot->band);
    if (snapshot->channelNumber) {
        header.channelLine = "Channel " + std::to_string(*snapshot->channelNumber);
        if (header.band)
            header.channelLine += " (" + *header.band + ")";
    }
    return header;
}

std::vector<MetricTrendRow> networkRows(const DashboardSources& sources) {
    using Snapshot = WiFiSnapshot;
    const auto& snapshot = sources.latestSnapshot.value();
    const auto& history = sources.wifiHistory.value();
    const auto valueOf = [&](auto field, std::string_view unit) {
        return formatQuantity(snapshot ? std::optional<std::int64_t>(field(*snapshot)) : std::nullopt, unit);
    };
    const auto rate = [](const Snapshot& s) { return s.linkRateMbps; };
    const auto snr = [](const Snapshot& s) { return s.snrDb; };
    const auto signal = [](const Snapshot& s) { return std::optional(s.rssiDbm); };
    const auto noise = [](const Snapshot& s) { return std::optional(s.noiseFloorDbm); };
    const auto samples = [&](auto field) {
        return samplesOf(history, [&](const Snapshot& s) { return asReal(field(s)); });
    };
    const std::vector<double> rates = samples(rate);
    return {
        {"Link Rate", valueOf(rate, "Mbps"), rates, linkRateDomain(rates), Tone::Green},
        {"SNR", valueOf(snr, "dB"), samples(snr), ValueRange{0, 50}, Tone::Yellow},
        {"Signal", valueOf(signal, "dBm"), samples(signal), ValueRange{-95, -30}, Tone::Orange},
        {"Noise", valueOf(noise, "dBm"), samples(noise), ValueRange{-110, -70}, Tone::Green},
    };
}

std::vector<MetricTrendRow> latencyRows(const DashboardSources& sources, const NumberFormat& format) {
    const auto& router = sources.routerResult.value();
    const auto& internet = sources.internetResult.value();
    const auto latency = [](const PingResult& result) { return result.latencyMilliseconds; };
    const auto jitter = [](const PingResult& result) { return result.jitterMilliseconds; };
    const auto valueOf = [&](const std::optional<PingResult>& result, auto field) {
        return formatQuantity(result ? field(*result) : std::nullopt, 1, "ms", format);
    };
    const auto& routerHistory = sources.routerHistory.value();
    const auto& internetHistory = sources.internetHistory.value();
    return {
        {"Router Ping", sources.isRouterIgnored.value() ? "ICMP blocked" : valueOf(router, latency),
         samplesOf(routerHistory, latency), ValueRange{0, 80}, Tone::Red},
        {"Internet Ping", valueOf(internet, latency), samplesOf(internetHistory, latency), ValueRange{0, 150},
         Tone::Orange},
        {"Jitter", valueOf(internet, jitter), samplesOf(internetHistory, jitter), ValueRange{0, 30}, Tone::Yellow},
    };
}

std::string packetLossText(const std::optional<PingResult>& internet, const NumberFormat& format) {
    return internet ? formatDecimal(internet->packetLossPercent, 0, format) + "%" : std::string(absentValueText);
}

} // namespace

ValueRange linkRateDomain(std::span<const double> samples) {
    if (samples.empty())
        return {0, highestLinkRateMbps};
    const auto [lowest, highest] = std::ranges::minmax(samples);
    const double span = std::max(highest - lowest, smallestLinkRateSpanMbps);
    const double middle = (lowest + highest) / 2;
    ValueRange range{middle - span / 2, middle + span / 2};
    if (range.lower < 0)
        range = {0, range.upper - range.lower};
    if (range.upper > highestLinkRateMbps)
        range = {range.lower - (range.upper - highestLinkRateMbps), highestLinkRateMbps};
    return {std::max(range.lower, 0.0), std::min(range.upper, highestLinkRateMbps)};
}

DashboardContent dashboardContent(const DashboardSources& sources, const NumberFormat& format) {
    const bool isMonitoringEnabled = sources.isMonitoringEnabled.value();
    const auto& dns = sources.dnsResult.value();
    const auto lookup = [](const DNSResult& result) { return result.latencyMilliseconds; };
    return {
        .health = healthStateBadge(sources.healthState.value()),
        .isMonitoringEnabled = isMonitoringEnabled,
        .monitoringLabel = isMonitoringEnabled ? "Monitoring" : "Paused",
        .messages = messages(sources),
        .network = networkHeader(sources),
        .networkRows = networkRows(sources),
        .latencyRows = latencyRows(sources, format),
        .packetLossRow = {"Packet Loss", packetLossText(sources.internetResult.value(), format)},
        .dnsDomainRow = {"Domain", dns ? dns->domain : std::string(absentValueText)},
        .dnsLookupRow = {"Lookup", formatQuantity(dns ? lookup(*dns) : std::nullopt, 1, "ms", format),
                         samplesOf(sources.dnsHistory.value(), lookup), ValueRange{0, 300}, Tone::Green},
    };
}

} // namespace tolvo
