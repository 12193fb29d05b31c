#pragma once

#include "presentation/panel/panel_route.h"

#include <array>
#include <string_view>

namespace tolvo {

/// An icon button of the header.
struct HeaderIconButton {
    std::string_view symbolName;
    std::string_view accessibilityLabel;
    std::string_view toolTip;
    /// The overlay that it opens.
    PanelRoute route;
};

/// What the dashboard says at all times.
struct DashboardFrameContent {
    std::string_view brandImageName = "BrandLogo";
    std::string_view brandLabel = "Tolvo";
    std::string_view subtitle = "Live Wi-Fi diagnostics";
    std::array<HeaderIconButton, 2> headerButtons{{
        {"wrench.and.screwdriver", "Open Toolbox", "Open diagnostics toolbox.", PanelRoute::Toolbox},
        {"gearshape", "Open Settings", "Open settings.", PanelRoute::Settings},
    }};
    /// Not shown, but read out.
    std::string_view monitoringSwitchLabel = "Enabled";
    std::string_view networkSymbolName = "wifi";
    std::string_view channelSymbolName = "info.circle";
    std::string_view channelButtonLabel = "Show channel details";
    std::string_view latencyTitle = "Latency";
    std::string_view dnsTitle = "DNS";
    std::string_view quitTitle = "Quit";
};

inline constexpr DashboardFrameContent dashboardFrameContent{};

} // namespace tolvo
