#pragma once

#include "core/async/published.h"
#include "core/model/channel_scan_result.h"
#include "presentation/rows/tone.h"
#include "presentation/rows/value_format.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// The published values of the channel scan.
struct ChannelScanSources {
    Published<std::optional<ChannelScanResult>>& latestResult;
    Published<bool>& isScanning;
    Published<std::int64_t>& completedPasses;
    Published<std::int64_t>& totalPasses;
};

std::vector<Subscription> subscribeToAll(const ChannelScanSources& sources, const std::function<void()>& onChange);

/// One of the two channels that are compared.
struct ChannelScanSelectionCard {
    std::string title;
    /// "Unavailable" alone, or the channel, its score and its count.
    std::vector<std::string> lines;
    Tone accentColor = Tone::Primary;

    bool operator==(const ChannelScanSelectionCard&) const = default;
};

struct ChannelScanMarkerTag {
    std::string text;
    Tone accentColor = Tone::Primary;

    bool operator==(const ChannelScanMarkerTag&) const = default;
};

struct ChannelScanCongestionRow {
    std::string title;
    std::vector<ChannelScanMarkerTag> tags;
    std::string score;
    std::string count;
    /// 0 to 1.
    double barShare = 0;
    Tone barColor = Tone::Green;
    /// Tags, score and count in one, for assistive programs.
    std::string spokenValue;

    bool operator==(const ChannelScanCongestionRow&) const = default;
};

/// All that the channel scan says at one moment. What follows hasResult is empty without one.
struct ChannelScanContent {
    std::string buttonLabel;
    bool isScanning = false;
    std::int64_t completedPasses = 0;
    /// At least 1.
    std::int64_t totalPasses = 1;
    /// 0 to 1.
    double progress = 0;
    bool hasResult = false;
    std::string networksSeen;
    std::string passes;
    ChannelScanSelectionCard current;
    ChannelScanSelectionCard recommended;
    std::string comparison;
    /// The channel in use first, the recommended one second, then the cleanest; at most 12.
    std::vector<ChannelScanCongestionRow> rows;

    bool operator==(const ChannelScanContent&) const = default;
};

ChannelScanContent channelScanContent(const ChannelScanSources& sources, const NumberFormat& format);

} // namespace tolvo
