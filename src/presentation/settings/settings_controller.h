#pragma once

#include "core/async/task_scope.h"
#include "presentation/settings/settings_content.h"

#include <functional>

namespace tolvo {

/// The settings panel's own state, and what its controls do. Main thread only.
class SettingsController final {
public:
    /// onChange is called after every change of what content() gives that starts here.
    SettingsController(MainLoop& loop, SettingsSources sources, std::function<void()> onChange);

    SettingsContent content() const { return settingsContent(state_, sources_); }

    void selectTab(SettingsOverlayTab tab);
    /// A failure is shown until the next success.
    void setLaunchAtLogin(bool isEnabled);
    void setBatteryFriendly(bool isBatteryFriendly) { sources_.setBatteryFriendly(isBatteryFriendly); }
    void openLoginItemsSettings() { sources_.launchAtLogin.openLoginItemsSettings(); }
    /// Does nothing while a check is going on.
    void checkForUpdates();
    void openDownload() { sources_.appUpdate.openDownload(); }

private:
    Task<void> check();

    SettingsSources sources_;
    std::function<void()> onChange_;
    SettingsState state_;
    std::vector<Subscription> subscriptions_;
    TaskScope tasks_;
};

} // namespace tolvo
