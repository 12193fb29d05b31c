#include "presentation/menu_bar/menu_bar_content.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tolvo {

namespace {

constexpr double lowestPopover = 320;
constexpr double highestPopover = 700;
/// Points that a height may differ by without the popover following.
constexpr double heightTolerance = 0.5;

constexpr ContentSize radarSize{1080, 680};
constexpr ContentSize smallestToolSize{860, 580};

std::pair<std::string_view, Tone> badge(HealthState state) {
    switch (state) {
    case HealthState::Good:
        return {"checkmark.circle.fill", Tone::Green};
    case HealthState::Warning:
        return {"exclamationmark.circle.fill", Tone::Orange};
    case HealthState::Poor:
        return {"xmark.circle.fill", Tone::Red};
    case HealthState::Disconnected:
        return {"pause.circle.fill", Tone::Gray};
    }
    std::unreachable();
}

} // namespace

StatusIconContent statusIconContent(HealthState state, bool isColorful) {
    const auto [symbolName, color] = badge(state);
    return {std::string(symbolName), isColorful ? color : Tone::Primary,
            "Tolvo status " + std::string(rawValue(state))};
}

ToolWindowDescription toolWindowDescription(ToolWindowKind kind) {
    using enum WindowResizing;
    switch (kind) {
    case ToolWindowKind::WiFiRadar:
        return {kind, "Wi-Fi Radar", Fixed, radarSize, radarSize, radarSize, "tolvo.wifiRadar.windowFrame"};
    case ToolWindowKind::SpeedTest:
        return {
            kind, "Speed Test", Resizable, {980, 680}, smallestToolSize, std::nullopt, "tolvo.speedTest.windowFrame"};
    case ToolWindowKind::ChannelScan:
        return {kind,
                "Channel Scan",
                Resizable,
                {960, 680},
                smallestToolSize,
                std::nullopt,
                "tolvo.channelScan.windowFrame"};
    case ToolWindowKind::DiagnosticsExport:
        return {kind,
                "Diagnostics Export",
                Resizable,
                {1020, 700},
                smallestToolSize,
                std::nullopt,
                "tolvo.diagnosticsExport.windowFrame"};
    }
    std::unreachable();
}

std::optional<ContentSize> adjustedPopoverSize(ContentSize present, double preferredHeight) {
    const double height = std::clamp(preferredHeight, lowestPopover, highestPopover);
    if (std::abs(height - present.height) <= heightTolerance)
        return std::nullopt;
    return ContentSize{initialPopoverSize.width, height};
}

} // namespace tolvo
