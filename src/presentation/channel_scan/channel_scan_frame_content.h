#pragma once

#include "presentation/rows/tone.h"
#include "presentation/tool_window/tool_window_frame_content.h"

namespace tolvo {

/// What the channel scan says at all times.
struct ChannelScanFrameContent {
    ToolWindowFrameContent window{
        .symbolName = "dot.radiowaves.left.and.right",
        .title = "Channel Scan",
        .subtitle = "Analyze nearby channel congestion and get a same-band recommendation.",
        .emptyTitle = "No scan results yet",
        .emptyText = "Run a scan to compare current channel quality against nearby options in the same band.",
    };
    /// Not shown, but read out.
    std::string_view progressLabel = "Scan passes";
    std::string_view networksSeenTitle = "Networks Seen";
    std::string_view passesTitle = "Passes";
    Tone comparisonColor = Tone::Blue;
    std::string_view bandCongestionTitle = "Band Congestion";
    std::string_view bandCongestionNote =
        "Interference score accounts for overlapping channels and signal strength. Lower is better.";
    std::string_view noChannels = "No channels available for the active band.";
};

inline constexpr ChannelScanFrameContent channelScanFrameContent{};

} // namespace tolvo
