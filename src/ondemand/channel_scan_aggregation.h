#pragma once

#include "probes/wifi_network_scanning.h"

#include <cstdint>
#include <span>
#include <vector>

namespace tolvo {

/// What one scan saw.
using ChannelScanPass = std::vector<WiFiScannedNetwork>;

/// One network over all passes.
struct ObservedNetworkAggregate {
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;
    double averageRSSIDbm = 0;
    /// The share of the passes in which it was seen.
    double presenceRatio = 0;
};

struct ChannelScanAggregation {
    /// In the order in which they were first seen.
    std::vector<ObservedNetworkAggregate> networks;
    /// Detections over all passes; one network counts once in each pass that saw it.
    std::int64_t detectionCount = 0;
};

/// Merges the passes into one record a network. A network is told from another by access point, name, channel and band
/// together, so one that changes its channel between passes becomes two; of equal ones in one pass the first counts.
ChannelScanAggregation aggregateNetworks(std::span<const ChannelScanPass> passes, std::int64_t passCount);

} // namespace tolvo
