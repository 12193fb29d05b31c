#include "presentation/panel/panel_route.h"

#include <utility>

namespace tolvo {

double preferredPopoverHeight(PanelRoute route) {
    switch (route) {
    case PanelRoute::Dashboard:
    case PanelRoute::Toolbox:
        return 650;
    case PanelRoute::Settings:
        return 560;
    case PanelRoute::ConnectionMonitor:
    case PanelRoute::CaptivePortal:
        return 430;
    }
    std::unreachable();
}

std::optional<BackButton> backButton(PanelRoute route) {
    switch (route) {
    case PanelRoute::Dashboard:
        return std::nullopt;
    case PanelRoute::Settings:
    case PanelRoute::Toolbox:
        return BackButton{"Back to Main", PanelRoute::Dashboard};
    case PanelRoute::ConnectionMonitor:
    case PanelRoute::CaptivePortal:
        return BackButton{"Back to Toolbox", PanelRoute::Toolbox};
    }
    std::unreachable();
}

} // namespace tolvo
