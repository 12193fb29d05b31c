#pragma once

#include "core/model/wall_time.h"
#include "core/model/wifi_band.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tolvo {

/// One channel's row of a channel scan.
struct ChannelCongestionSample {
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;
    std::int64_t networkCount = 0;
    double averageRSSIDbm = 0;
    /// Lower is better.
    double interferenceScore = 0;
    /// The score relative to the highest of its band, 0 to 1.
    double normalizedCongestion = 0;

    bool operator==(const ChannelCongestionSample&) const = default;
};

/// The outcome of one channel scan.
struct ChannelScanResult {
    WallTime timestamp;
    std::int64_t passCount = 0;
    /// Detections over all passes: a network seen in three passes counts three times.
    std::int64_t scannedNetworkCount = 0;
    std::vector<ChannelCongestionSample> channels;
    std::optional<std::int64_t> currentChannelNumber;
    std::optional<WiFiBand> currentBand;
    std::optional<double> currentChannelInterferenceScore;
    std::optional<std::int64_t> suggestedChannelNumber;
    std::optional<WiFiBand> suggestedBand;
    bool didSucceed = false;

    bool operator==(const ChannelScanResult&) const = default;
};

} // namespace tolvo
