#pragma once

#include "presentation/tool_window/tool_window_frame_content.h"

namespace tolvo {

/// What the speed test says at all times.
struct SpeedTestFrameContent {
    ToolWindowFrameContent window{
        .symbolName = "speedometer",
        .title = "Speed Test",
        .subtitle = "Measure download, upload and responsiveness under load.",
        .emptyTitle = "No speed test results yet",
        .emptyText = "Run a test to measure download, upload, and latency under load.",
    };
    std::string_view throughputTitle = "Throughput";
    std::string_view latencyTitle = "Latency";
    std::string_view bufferbloatTitle = "Bufferbloat";
};

inline constexpr SpeedTestFrameContent speedTestFrameContent{};

} // namespace tolvo
