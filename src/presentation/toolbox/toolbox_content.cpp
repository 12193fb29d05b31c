#include "presentation/toolbox/toolbox_content.h"

#include <array>

namespace tolvo {

std::span<const ToolboxToolRow> toolboxRows() {
    using enum ToolboxAction;
    static constexpr std::array<ToolboxToolRow, 6> rows{{
        {"scope", "Wi-Fi Radar", "See live signal strength and nearby network crowding.", OpenWiFiRadar},
        {"dot.radiowaves.left.and.right", "Channel Scan", "Scan nearby networks and suggest a cleaner channel.",
         OpenChannelScan},
        {"speedometer", "Speed Test", "Measure throughput and bufferbloat with Cloudflare's speed test.",
         OpenSpeedTest},
        {"point.3.connected.trianglepath.dotted", "Connection Monitor",
         "Track TCP connection pressure from socket state activity.", OpenConnectionMonitor},
        {"wifi.exclamationmark", "Captive Portal", "Detect captive portal redirects and injected login pages.",
         OpenCaptivePortal},
        {"square.and.arrow.up.on.square", "Diagnostics Export",
         "Capture current network diagnostics and export them as JSON.", OpenDiagnosticsExport},
    }};
    return rows;
}

} // namespace tolvo
