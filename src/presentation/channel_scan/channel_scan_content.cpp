#include "presentation/channel_scan/channel_scan_content.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tolvo {

namespace {

constexpr std::size_t maxRowCount = 12;
/// Keeps a percentage finite next to a channel without any interference.
constexpr double smallestComparedScore = 0.01;

struct Selection {
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;
    double interferenceScore = 0;
    std::int64_t networkCount = 0;
};

const ChannelCongestionSample* sampleOf(const std::vector<ChannelCongestionSample>& samples, std::int64_t channel,
                                        std::optional<WiFiBand> band) {
    const auto found = std::ranges::find_if(samples, [&](const ChannelCongestionSample& sample) {
        return sample.channelNumber == channel && (!band || sample.band == *band);
    });
    return found == samples.end() ? nullptr : &*found;
}

std::optional<Selection> currentSelection(const ChannelScanResult& result) {
    if (!result.currentChannelNumber)
        return std::nullopt;
    const std::int64_t channel = *result.currentChannelNumber;
    if (const auto* sample = sampleOf(result.channels, channel, result.currentBand))
        return Selection{channel, result.currentBand.value_or(sample->band), sample->interferenceScore,
                         sample->networkCount};
    return Selection{channel, result.currentBand.value_or(WiFiBand::Unknown),
                     result.currentChannelInterferenceScore.value_or(0), 0};
}

std::optional<Selection> recommendedSelection(const ChannelScanResult& result) {
    if (!result.suggestedChannelNumber || !result.suggestedBand)
        return std::nullopt;
    Selection selection{*result.suggestedChannelNumber, *result.suggestedBand, 0, 0};
    if (const auto* sample = sampleOf(result.channels, selection.channelNumber, selection.band)) {
        selection.interferenceScore = sample->interferenceScore;
        selection.networkCount = sample->networkCount;
    }
    return selection;
}

std::string scoreText(double score, const NumberFormat& format) {
    return "Score " + formatDecimal(score, 2, format);
}

std::string countText(std::int64_t count, const std::string& one, const std::string& many) {
    return count == 1 ? "1 " + one : std::to_string(count) + " " + many;
}

ChannelScanSelectionCard card(std::string title, const std::optional<Selection>& selection, Tone accentColor,
                              const NumberFormat& format) {
    if (!selection)
        return {std::move(title), {"Unavailable"}, accentColor};
    return {std::move(title),
            {"Ch " + std::to_string(selection->channelNumber) + " (" + std::string(rawValue(selection->band)) + ")",
             scoreText(selection->interferenceScore, format),
             countText(selection->networkCount, "nearby network", "nearby networks")},
            accentColor};
}

/// No decimal place, or one where it isn't zero.
std::string percentText(double percent, const NumberFormat& format) {
    const double tenths = std::round(percent * 10);
    return formatDecimal(tenths / 10, std::fmod(tenths, 10) == 0 ? 0 : 1, format);
}

std::string comparison(const std::optional<Selection>& current, const std::optional<Selection>& recommended,
                       const NumberFormat& format) {
    if (!current || !recommended)
        return "Run a scan to compare current and recommended channel strength.";
    if (current->channelNumber == recommended->channelNumber && current->band == recommended->band)
        return "Current channel already matches the recommendation.";
    const double c = current->interferenceScore;
    const double r = recommended->interferenceScore;
    const std::string percent = percentText(std::abs(c - r) / std::max(c, smallestComparedScore) * 100, format);
    if (c > r) {
        return "Switching to Ch " + std::to_string(recommended->channelNumber) + " may reduce interference by about " +
               percent + "%.";
    }
    if (c == r)
        return "Current and recommended channels have the same measured interference.";
    return "Current channel is about " + percent + "% cleaner than the recommended channel right now.";
}

Tone barColor(double normalizedCongestion) {
    if (normalizedCongestion >= 0.67)
        return Tone::Red;
    return normalizedCongestion >= 0.34 ? Tone::Orange : Tone::Green;
}

std::string spoken(const std::vector<ChannelScanMarkerTag>& tags, const std::string& score, const std::string& count) {
    std::string text;
    for (const ChannelScanMarkerTag& tag : tags)
        text += tag.text + ", ";
    return text + score + ", " + count;
}

ChannelScanCongestionRow row(const ChannelCongestionSample& sample, const ChannelScanResult& result,
                             const NumberFormat& format) {
    std::vector<ChannelScanMarkerTag> tags;
    if (sample.channelNumber == result.currentChannelNumber)
        tags.push_back({"Current", Tone::Blue});
    if (sample.channelNumber == result.suggestedChannelNumber)
        tags.push_back({"Recommended", Tone::Green});
    std::string score = scoreText(sample.interferenceScore, format);
    std::string count = countText(sample.networkCount, "network", "networks");
    std::string spokenValue = spoken(tags, score, count);
    return {"Ch " + std::to_string(sample.channelNumber),
            std::move(tags),
            std::move(score),
            std::move(count),
            sample.normalizedCongestion,
            barColor(sample.normalizedCongestion),
            std::move(spokenValue)};
}

std::vector<ChannelCongestionSample> samplesOfActiveBand(const ChannelScanResult& result,
                                                         std::optional<WiFiBand> activeBand) {
    std::vector<ChannelCongestionSample> samples = result.channels;
    if (activeBand)
        std::erase_if(samples, [&](const ChannelCongestionSample& sample) { return sample.band != *activeBand; });
    std::ranges::sort(samples, {}, [](const ChannelCongestionSample& sample) {
        return std::pair(sample.interferenceScore, sample.channelNumber);
    });
    return samples;
}

std::vector<ChannelScanCongestionRow> congestionRows(const ChannelScanResult& result, const NumberFormat& format) {
    const auto activeBand = result.currentBand ? result.currentBand : result.suggestedBand;
    const auto sorted = samplesOfActiveBand(result, activeBand);
    std::vector<ChannelCongestionSample> listed;
    for (const auto pinned : {result.currentChannelNumber, result.suggestedChannelNumber}) {
        if (!pinned || sampleOf(listed, *pinned, std::nullopt))
            continue;
        if (const auto* sample = sampleOf(sorted, *pinned, std::nullopt))
            listed.push_back(*sample);
        else if (activeBand)
            listed.push_back({*pinned, *activeBand, 0, -100, 0, 0});
    }
    for (const ChannelCongestionSample& sample : sorted) {
        if (listed.size() < maxRowCount && !sampleOf(listed, sample.channelNumber, std::nullopt))
            listed.push_back(sample);
    }
    std::vector<ChannelScanCongestionRow> rows;
    rows.reserve(listed.size());
    for (const ChannelCongestionSample& sample : listed)
        rows.push_back(row(sample, result, format));
    return rows;
}

std::string buttonLabel(const ChannelScanSources& sources) {
    if (sources.isScanning.value())
        return "Cancel";
    return sources.latestResult.value() ? "Scan Again" : "Scan Now";
}

} // namespace

std::vector<Subscription> subscribeToAll(const ChannelScanSources& sources, const std::function<void()>& onChange) {
    return subscribeToEach(onChange, sources.latestResult, sources.isScanning, sources.completedPasses,
                           sources.totalPasses);
}

ChannelScanContent channelScanContent(const ChannelScanSources& sources, const NumberFormat& format) {
    ChannelScanContent content;
    content.buttonLabel = buttonLabel(sources);
    content.isScanning = sources.isScanning.value();
    content.completedPasses = sources.completedPasses.value();
    content.totalPasses = std::max<std::int64_t>(sources.totalPasses.value(), 1);
    content.progress = static_cast<double>(content.completedPasses) / static_cast<double>(content.totalPasses);
    const auto& result = sources.latestResult.value();
    if (!result)
        return content;
    const auto current = currentSelection(*result);
    const auto recommended = recommendedSelection(*result);
    content.hasResult = true;
    content.networksSeen = std::to_string(result->scannedNetworkCount);
    content.passes = std::to_string(result->passCount);
    content.current = card("Current", current, Tone::Blue, format);
    content.recommended = card("Recommended", recommended, Tone::Green, format);
    content.comparison = comparison(current, recommended, format);
    content.rows = congestionRows(*result, format);
    return content;
}

} // namespace tolvo
