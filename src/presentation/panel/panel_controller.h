#pragma once

#include "core/async/main_loop.h"
#include "integration/location_permission_status.h"
#include "platform/services/locale_formats.h"
#include "platform/services/tool_window.h"
#include "presentation/panel/panel_content.h"
#include "presentation/settings/settings_controller.h"
#include "presentation/toolbox/toolbox_content.h"

#include <functional>
#include <vector>

namespace tolvo {

/// What the panels show besides the settings.
struct PanelSources {
    DashboardSources dashboard;
    Published<LocationPermissionStatus>& locationPermissionStatus;
    Published<std::vector<ConnectionPressureResult>>& connectionHistory;
};

/// What the panels' controls ask of the rest of the program.
struct PanelActions {
    std::function<void(bool isEnabled)> setMonitoringEnabled;
    std::function<void()> performPrimaryLocationAction;
    std::function<void(double height)> onPreferredPopoverHeightChange;
    std::function<void(ToolWindowKind kind)> onOpenToolWindow;
    std::function<void()> onQuit;
};

/// Chooses which panel the popover shows and keeps the display up to date, but only while it is on the screen. The
/// route stays when the popover closes. Main thread only.
class PanelController final {
public:
    PanelController(MainLoop& loop, PanelSources sources, SettingsSources settings, PanelActions actions,
                    const LocaleFormats& formats);

    /// The display, while it is on the screen; null when it isn't. Shows the present content at once.
    void setDisplay(PanelDisplaying* display);

    PanelRoute activePanel() const { return activePanel_; }
    void openPanel(PanelRoute route);
    /// One step back; nothing on the dashboard.
    void goBack();
    void performToolboxAction(ToolboxAction action);
    void setMonitoringEnabled(bool isEnabled) { actions_.setMonitoringEnabled(isEnabled); }
    void performPrimaryLocationAction() { actions_.performPrimaryLocationAction(); }
    void quit() { actions_.onQuit(); }
    SettingsController& settings() { return settings_; }

private:
    PanelContent content() const;
    void scheduleUpdate();
    void update();

    MainLoop& loop_;
    PanelSources sources_;
    PanelActions actions_;
    const LocaleFormats& formats_;
    PanelRoute activePanel_ = PanelRoute::Dashboard;
    PanelDisplaying* display_ = nullptr;
    bool isUpdateScheduled_ = false;
    SettingsController settings_;
    std::vector<Subscription> subscriptions_;
    LoopRegistration update_;
};

} // namespace tolvo
