#include "presentation/settings/settings_controller.h"

#include <utility>

namespace tolvo {

SettingsController::SettingsController(MainLoop& loop, SettingsSources sources, std::function<void()> onChange)
    : sources_(std::move(sources)), onChange_(std::move(onChange)), tasks_(loop) {
    for (Published<bool>* flag :
         {&sources_.isBatteryFriendly, &sources_.launchAtLogin.isEnabled, &sources_.launchAtLogin.requiresApproval})
        subscriptions_.push_back(flag->subscribe([this](bool) { onChange_(); }));
    subscriptions_.push_back(sources_.appUpdate.subscribe([this] { onChange_(); }));
}

void SettingsController::selectTab(SettingsOverlayTab tab) {
    state_.selectedTab = tab;
    onChange_();
}

void SettingsController::setLaunchAtLogin(bool isEnabled) {
    const auto outcome = sources_.launchAtLogin.setEnabled(isEnabled);
    state_.launchAtLoginError = outcome ? std::nullopt : std::optional(outcome.error());
    onChange_();
}

void SettingsController::checkForUpdates() {
    if (std::exchange(state_.isCheckingForUpdate, true))
        return;
    onChange_();
    tasks_.start(check());
}

Task<void> SettingsController::check() {
    co_await sources_.appUpdate.checkNow();
    state_.isCheckingForUpdate = false;
    onChange_();
}

} // namespace tolvo
