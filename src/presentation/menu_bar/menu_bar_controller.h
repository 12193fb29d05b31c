#pragma once

#include "core/async/published.h"
#include "core/colorful_icon_settings_providing.h"
#include "core/model/health_state.h"
#include "platform/services/click_monitor.h"
#include "platform/services/popover.h"
#include "platform/services/status_item.h"
#include "platform/services/tool_window.h"
#include "presentation/menu_bar/status_icon_rendering.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace tolvo {

/// What the status item follows.
struct MenuBarSources {
    Published<bool>& isMonitoringEnabled;
    Published<HealthState>& healthState;
    const ColorfulIconSettingsProviding& colorfulIconSettingsProvider;
};

/// What the popover's coming and going means to the rest of the program.
struct MenuBarActions {
    std::function<void()> refreshLocationStatus;
    std::function<void(bool isPresented)> setPopoverPresented;
    std::function<void()> applyPollInterval;
    std::function<void()> refreshMonitorsNow;
    std::function<void()> terminate;
};

struct MenuBarServices {
    StatusItem& statusItem;
    Popover& popover;
    ClickMonitor& clickMonitor;
    ToolWindowMaking& toolWindows;
    StatusIconRendering& iconRendering;
};

/// The program's presence on the desktop: the status item, the popover beside it and the tool windows. Where no status
/// area takes the item at start, the popover opens as an ordinary window, and closing that ends the program; the item
/// moves in when an area appears. All that is given outlives it. Main thread only.
class MenuBarController final {
public:
    MenuBarController(MenuBarServices services, MenuBarSources sources, MenuBarActions actions);
    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;
    ~MenuBarController();

    /// Once; a second call does nothing.
    void installStatusItem();
    /// At termination.
    void removeStatusItem();
    void refreshStatusIcon();

    /// Closes the popover, or shows it beside the place.
    void togglePopover(ScreenRect place);
    /// Brings the popover to the front, where it was last, and as an ordinary window while no area has the item; as a
    /// second start of the program asks for.
    void presentPopover();
    void setPreferredPopoverHeight(double height);
    /// A window is built once and kept with its state.
    void openToolWindow(ToolWindowKind kind);

private:
    void refreshStatusIcon(HealthState healthState);
    void showPopover(std::optional<ScreenRect> place);
    void popoverDidClose();
    void hostDidChange(bool isHosted);
    void installClickMonitors();
    void removeClickMonitors();
    ToolWindow& toolWindow(ToolWindowKind kind);

    MenuBarServices services_;
    MenuBarSources sources_;
    MenuBarActions actions_;
    bool isInstalled_ = false;
    bool isHosted_ = false;
    bool hasHeardOfHost_ = false;
    /// The popover is shown with a frame, as the program's main window.
    bool isOrdinaryWindow_ = false;
    std::optional<ScreenRect> lastPlace_;
    std::map<ToolWindowKind, std::unique_ptr<ToolWindow>> toolWindows_;
    std::optional<LoopRegistration> globalClickMonitor_;
    std::optional<LoopRegistration> localClickMonitor_;
    Subscription monitoringSubscription_;
    Subscription healthSubscription_;
};

} // namespace tolvo
