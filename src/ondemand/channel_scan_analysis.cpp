#include "ondemand/channel_scan_analysis.h"

#include "ondemand/channel_plan.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace tolvo {

namespace {

using NetworksByChannel = std::map<std::int64_t, std::vector<ObservedNetworkAggregate>>;

double signalWeight(double averageRSSIDbm) {
    if (averageRSSIDbm >= -55)
        return 1.0;
    if (averageRSSIDbm >= -65)
        return 0.75;
    if (averageRSSIDbm >= -75)
        return 0.5;
    return averageRSSIDbm >= -85 ? 0.25 : 0.1;
}

/// Sums up what the networks of one band do to one channel of it.
class ChannelLoad {
public:
    ChannelLoad(std::int64_t channelNumber, WiFiBand band) {
        sample_.channelNumber = channelNumber;
        sample_.band = band;
    }

    void add(const std::vector<ObservedNetworkAggregate>& networks) {
        for (const auto& network : networks)
            add(network);
    }

    ChannelCongestionSample sample() const {
        ChannelCongestionSample result = sample_;
        result.averageRSSIDbm = weightTotal_ > 0 ? weightedRSSITotal_ / weightTotal_ : -100.0;
        return result;
    }

private:
    void add(const ObservedNetworkAggregate& network) {
        const double overlap =
            channelOverlap(sample_.band, channelDistance(network.channelNumber, sample_.channelNumber));
        sample_.interferenceScore += network.presenceRatio * signalWeight(network.averageRSSIDbm) * overlap;
        weightedRSSITotal_ += network.presenceRatio * (network.averageRSSIDbm * overlap);
        weightTotal_ += network.presenceRatio * overlap;
        ++sample_.networkCount;
    }

    ChannelCongestionSample sample_;
    double weightedRSSITotal_ = 0;
    double weightTotal_ = 0;
};

/// The nearest channels are added first, so that the lowest and the highest channel of a band get the very same score
/// from mirrored neighbourhoods.
ChannelCongestionSample sampleOf(std::int64_t channelNumber, WiFiBand band, const NetworksByChannel& networks) {
    ChannelLoad load(channelNumber, band);
    const auto reach = overlapReach(band);
    const auto distanceTo = [&](auto position) { return channelDistance(position->first, channelNumber); };
    auto above = networks.lower_bound(channelNumber);
    auto below = above;
    while (true) {
        const bool hasBelow = below != networks.begin() && distanceTo(std::prev(below)) <= reach;
        const bool hasAbove = above != networks.end() && distanceTo(above) <= reach;
        if (!hasBelow && !hasAbove)
            return load.sample();
        if (hasBelow && (!hasAbove || distanceTo(std::prev(below)) < distanceTo(above)))
            load.add((--below)->second);
        else
            load.add((above++)->second);
    }
}

void normalize(std::span<ChannelCongestionSample> samples) {
    double highest = 0;
    for (const auto& sample : samples)
        highest = std::max(highest, sample.interferenceScore);
    for (auto& sample : samples)
        sample.normalizedCongestion = highest > 0 ? std::clamp(sample.interferenceScore / highest, 0.0, 1.0) : 0;
}

std::vector<ChannelCongestionSample> samplesOf(WiFiBand band, const NetworksByChannel& networks,
                                               const CurrentChannel& current) {
    const auto always = sampledChannels(band);
    std::set<std::int64_t> candidates(always.begin(), always.end());
    for (const auto& [channelNumber, ofChannel] : networks)
        candidates.insert(channelNumber);
    if (current.band == band && current.channelNumber)
        candidates.insert(*current.channelNumber);
    std::vector<ChannelCongestionSample> samples;
    samples.reserve(candidates.size());
    for (const std::int64_t channelNumber : candidates)
        samples.push_back(sampleOf(channelNumber, band, networks));
    normalize(samples);
    return samples;
}

std::vector<ChannelCongestionSample> allSamples(std::vector<ObservedNetworkAggregate> networks,
                                                const CurrentChannel& current) {
    // By band label, which is also the order of the bands.
    constexpr std::array bands{WiFiBand::TwoPointFourGigahertz, WiFiBand::FiveGigahertz, WiFiBand::SixGigahertz};
    // Sorted, so that sums don't depend on the order in which the networks were seen.
    std::ranges::sort(networks, {}, [](const ObservedNetworkAggregate& network) {
        return std::pair(network.averageRSSIDbm, network.presenceRatio);
    });
    std::map<WiFiBand, NetworksByChannel> byBand;
    for (const ObservedNetworkAggregate& network : networks)
        byBand[network.band][network.channelNumber].push_back(network);
    std::vector<ChannelCongestionSample> samples;
    for (const WiFiBand band : bands) {
        if (!byBand.contains(band) && current.band != band)
            continue;
        const auto samplesOfBand = samplesOf(band, byBand[band], current);
        samples.insert(samples.end(), samplesOfBand.begin(), samplesOfBand.end());
    }
    return samples;
}

double scoreOn(std::span<const ChannelCongestionSample> samples, std::int64_t channelNumber,
               std::optional<WiFiBand> band) {
    const auto sample = std::ranges::find_if(samples, [&](const ChannelCongestionSample& candidate) {
        return candidate.channelNumber == channelNumber && (!band || candidate.band == *band);
    });
    return sample == samples.end() ? 0.0 : sample->interferenceScore;
}

/// The channel with the lowest score; of equal ones the nearest to the present channel, then the lowest.
std::optional<std::int64_t> recommendedChannel(std::span<const ChannelCongestionSample> samples, WiFiBand band,
                                               std::optional<std::int64_t> currentChannelNumber) {
    const auto rank = [&](std::int64_t channelNumber) {
        const auto distance = currentChannelNumber ? channelDistance(channelNumber, *currentChannelNumber) : 0;
        return std::tuple(scoreOn(samples, channelNumber, band), distance, channelNumber);
    };
    const auto candidates = recommendableChannels(band);
    if (candidates.empty())
        return std::nullopt;
    return *std::ranges::min_element(candidates, {}, rank);
}

} // namespace

ChannelScanResult analyzeChannelScan(std::span<const ChannelScanPass> passes, std::int64_t passCount,
                                     const CurrentChannel& current, WallTime timestamp) {
    ChannelScanAggregation aggregation = aggregateNetworks(passes, passCount);
    ChannelScanResult result;
    result.timestamp = timestamp;
    result.passCount = passCount;
    result.scannedNetworkCount = aggregation.detectionCount;
    result.channels = allSamples(std::move(aggregation.networks), current);
    result.currentChannelNumber = current.channelNumber;
    result.currentBand = current.band;
    if (current.channelNumber)
        result.currentChannelInterferenceScore = scoreOn(result.channels, *current.channelNumber, current.band);
    result.suggestedBand = current.band;
    if (!result.suggestedBand && !result.channels.empty())
        result.suggestedBand = result.channels.front().band;
    if (result.suggestedBand)
        result.suggestedChannelNumber =
            recommendedChannel(result.channels, *result.suggestedBand, current.channelNumber);
    result.didSucceed = true;
    return result;
}

} // namespace tolvo
