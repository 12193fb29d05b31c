#include "integration/launch_at_login_controller.h"

namespace tolvo {

LaunchAtLoginController::LaunchAtLoginController(MainLoop& loop, LoginItem& loginItem,
                                                 NotificationCenter& notificationCenter)
    : loginItem_(loginItem), tasks_(loop) {
    appDidBecomeActiveObserver_ = notificationCenter.addObserver(ApplicationNotification::DidBecomeActive,
                                                                 [this] { tasks_.start(refreshInTask()); });
    refreshStatus();
}

Task<void> LaunchAtLoginController::refreshInTask() {
    refreshStatus();
    co_return;
}

void LaunchAtLoginController::refreshStatus() {
    const LoginItemStatus status = loginItem_.status();
    isEnabled.set(status == LoginItemStatus::Enabled);
    requiresApproval.set(status == LoginItemStatus::RequiresApproval);
}

std::expected<void, LaunchAtLoginError> LaunchAtLoginController::setEnabled(bool isOn) {
    refreshStatus();
    if (isEnabled.value() == isOn)
        return {};
    const auto outcome = isOn ? loginItem_.registerItem() : loginItem_.unregisterItem();
    refreshStatus();
    if (!outcome)
        return std::unexpected(LaunchAtLoginError{outcome.error()});
    return {};
}

} // namespace tolvo
