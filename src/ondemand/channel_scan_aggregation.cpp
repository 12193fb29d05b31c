#include "ondemand/channel_scan_aggregation.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <unordered_map>

namespace tolvo {

namespace {

struct Accumulator {
    std::int64_t detectionCount = 0;
    std::int64_t rssiTotal = 0;
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;
    std::size_t lastPass = 0;
};

/// Into a text that is used again, since thousands are looked up.
void writeNetworkKey(const WiFiScannedNetwork& network, std::string& key) {
    char channel[24];
    const auto end = std::to_chars(std::begin(channel), std::end(channel), network.channelNumber).ptr;
    key = network.bssid ? *network.bssid : "no-bssid";
    key.append(1, '|').append(network.ssid ? *network.ssid : "hidden");
    key.append(1, '|').append(channel, end);
    key.append(1, '|').append(rawValue(network.band));
}

ObservedNetworkAggregate aggregateOf(const Accumulator& accumulator, std::int64_t passCount) {
    const auto detections = static_cast<double>(std::max<std::int64_t>(accumulator.detectionCount, 1));
    const auto passes = static_cast<double>(std::max<std::int64_t>(passCount, 1));
    return {
        .channelNumber = accumulator.channelNumber,
        .band = accumulator.band,
        .averageRSSIDbm = static_cast<double>(accumulator.rssiTotal) / detections,
        .presenceRatio = static_cast<double>(accumulator.detectionCount) / passes,
    };
}

class Aggregator {
public:
    void add(const ChannelScanPass& pass) {
        ++currentPass_;
        for (const WiFiScannedNetwork& network : pass)
            add(network);
    }

    ChannelScanAggregation finish(std::int64_t passCount) const {
        ChannelScanAggregation result;
        result.networks.reserve(accumulators_.size());
        for (const Accumulator& accumulator : accumulators_) {
            result.networks.push_back(aggregateOf(accumulator, passCount));
            result.detectionCount += accumulator.detectionCount;
        }
        return result;
    }

private:
    void add(const WiFiScannedNetwork& network) {
        writeNetworkKey(network, key_);
        const auto [entry, isNew] = positions_.try_emplace(key_, accumulators_.size());
        if (isNew)
            accumulators_.push_back({.channelNumber = network.channelNumber, .band = network.band});
        Accumulator& accumulator = accumulators_[entry->second];
        if (accumulator.lastPass == currentPass_)
            return;
        accumulator.lastPass = currentPass_;
        ++accumulator.detectionCount;
        accumulator.rssiTotal += network.rssiDbm;
    }

    std::size_t currentPass_ = 0;
    std::string key_;
    std::unordered_map<std::string, std::size_t> positions_;
    std::vector<Accumulator> accumulators_;
};

} // namespace

ChannelScanAggregation aggregateNetworks(std::span<const ChannelScanPass> passes, std::int64_t passCount) {
    Aggregator aggregator;
    for (const ChannelScanPass& pass : passes)
        aggregator.add(pass);
    return aggregator.finish(passCount);
}

} // namespace tolvo
