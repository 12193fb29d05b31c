#pragma once

#include <optional>
#include <string_view>

namespace tolvo {

/// What the popover shows: the dashboard, or an overlay over it.
enum class PanelRoute { Dashboard, Settings, Toolbox, ConnectionMonitor, CaptivePortal };

/// The popover's height in points that the route asks for.
double preferredPopoverHeight(PanelRoute route);

/// An overlay's way back.
struct BackButton {
    std::string_view title;
    PanelRoute route = PanelRoute::Dashboard;
};

/// Nothing for the dashboard.
std::optional<BackButton> backButton(PanelRoute route);

} // namespace tolvo
