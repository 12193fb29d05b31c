#include "presentation/wifi_radar/wifi_radar_content.h"

#include "core/text.h"
#include "ondemand/wifi_radar_quality.h"
#include "presentation/rows/value_format.h"

#include <algorithm>
#include <cmath>

namespace tolvo {

namespace {

constexpr double secondsPerTurn = 2.2;
/// From this score on a spot counts as good.
constexpr std::int64_t goodSpotScore = 66;

Tone scoreColor(std::int64_t score) {
    if (score >= 75)
        return Tone::Green;
    return score >= 45 ? Tone::Yellow : Tone::Orange;
}

std::vector<std::int64_t> scoresOf(const std::vector<WiFiSnapshot>& history) {
    std::vector<std::int64_t> scores;
    scores.reserve(history.size());
    for (const WiFiSnapshot& snapshot : history)
        scores.push_back(radarQualityScore(snapshot));
    return scores;
}

template<class Field>
std::vector<double> samplesOf(const std::vector<WiFiSnapshot>& history, Field field) {
    std::vector<double> samples;
    for (const WiFiSnapshot& snapshot : history) {
        if (const std::optional<std::int64_t> value = field(snapshot))
            samples.push_back(static_cast<double>(*value));
    }
    return samples;
}

std::vector<RadarMetricCard> cards(const std::optional<WiFiSnapshot>& snapshot,
                                   const std::vector<WiFiSnapshot>& history, std::int64_t score) {
    const auto snr = [](const WiFiSnapshot& s) { return s.snrDb; };
    const auto rssi = [](const WiFiSnapshot& s) { return std::optional(s.rssiDbm); };
    const auto rate = [](const WiFiSnapshot& s) { return s.linkRateMbps; };
    const auto quality = [](const WiFiSnapshot& s) { return std::optional(radarQualityScore(s)); };
    const auto rates = samplesOf(history, rate);
    const double highestRate = rates.empty() ? 0 : std::ranges::max(rates);
    const auto currentSNR = snapshot ? snapshot->snrDb : std::nullopt;
    const std::string snrText = currentSNR ? std::to_string(*currentSNR) : std::string(absentValueText);
    const std::string rssiText = std::to_string(snapshot ? snapshot->rssiDbm : 0);
    const std::string rateText = std::to_string(snapshot ? snapshot->linkRateMbps.value_or(0) : 0);
    const Tone color = scoreColor(score);
    return {{"Quality", std::to_string(score), std::nullopt, color, samplesOf(history, quality), {0, 100}},
            {"SNR", snrText, "dB", color, samplesOf(history, snr), {0, 50}},
            {"RSSI", rssiText, "dBm", color, samplesOf(history, rssi), {-95, -30}},
            {"Speed", rateText, "Mbps", color, rates, {0, std::max(200.0, highestRate)}}};
}

std::string channelText(std::int64_t channel, WiFiBand band) {
    return "Ch " + std::to_string(channel) + " . " + std::string(rawValue(band));
}

std::vector<RadarNearbyNetworkRow> nearbyRows(const WiFiRadarSources& sources,
                                              const std::optional<std::string>& currentSSID) {
    std::vector<RadarNearbyNetworkRow> rows;
    for (const RadarNearbyNetwork& network : otherNetworks(sources.nearbyNetworks.value(), currentSSID)) {
        rows.push_back({network.ssid, std::to_string(network.signalDbm) + " dBm",
                        channelText(network.channelNumber, network.band)});
    }
    return rows;
}

} // namespace

std::vector<Subscription> subscribeToAll(const WiFiRadarSources& sources, const std::function<void()>& onChange) {
    return subscribeToEach(onChange, sources.radarSnapshot, sources.radarHistory, sources.monitorSnapshot,
                           sources.monitorHistory, sources.nearbyNetworks, sources.nearbyErrorMessage);
}

double radarSweepDegrees(double secondsSinceOpening) {
    return std::fmod(secondsSinceOpening, secondsPerTurn) / secondsPerTurn * 360 - 90;
}

WiFiRadarContent wifiRadarContent(const WiFiRadarSources& sources) {
    const auto& snapshot =
        sources.radarSnapshot.value() ? sources.radarSnapshot.value() : sources.monitorSnapshot.value();
    const auto& history =
        sources.radarHistory.value().empty() ? sources.monitorHistory.value() : sources.radarHistory.value();
    const std::int64_t score = radarQualityScore(snapshot);
    const bool shouldGoBack = radarShouldGoBack(scoresOf(history));
    const auto ssid = snapshot ? snapshot->ssid : std::nullopt;
    WiFiRadarContent content{
        .score = score,
        .scoreColor = scoreColor(score),
        .scoreSymbolName = score < goodSpotScore ? "exclamationmark.triangle.fill" : "checkmark.circle.fill",
        .coverageMessage = std::string(radarCoverageMessage(score)),
        .hintSymbolName = shouldGoBack ? "arrow.uturn.backward.circle.fill" : "arrow.forward.circle.fill",
        .hint = shouldGoBack ? "go back" : "keep going",
        .networkName = ssid.value_or("No Wi-Fi Network"),
        .hasCurrentTag = ssid && !trimmed(*ssid).empty(),
        .channelLine = snapshot && snapshot->channelNumber
                           ? channelText(*snapshot->channelNumber, snapshot->band.value_or(WiFiBand::Unknown))
                           : "Channel unavailable",
        .cards = cards(snapshot, history, score),
        .nearby = nearbyRows(sources, ssid),
        .nearbyPlaceholder = {},
    };
    if (content.nearby.empty())
        content.nearbyPlaceholder = sources.nearbyErrorMessage.value().value_or("Scanning nearby networks...");
    return content;
}

} // namespace tolvo
