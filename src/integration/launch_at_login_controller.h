#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "platform/services/login_item.h"
#include "platform/services/notification_center.h"

#include <expected>
#include <string>

namespace tolvo {

struct LaunchAtLoginError {
    /// Why the registration, or its end, failed.
    LoginItemError registrationFailed;

    /// In words for the user.
    std::string description() const { return "Failed to update login item: " + registrationFailed.description; }
    bool operator==(const LaunchAtLoginError&) const = default;
};

/// The login item as the settings show and change it. The system owns the truth, and is asked anew each time that the
/// program comes to the front. Main thread only.
class LaunchAtLoginController final {
public:
    LaunchAtLoginController(MainLoop& loop, LoginItem& loginItem, NotificationCenter& notificationCenter);
    LaunchAtLoginController(const LaunchAtLoginController&) = delete;
    LaunchAtLoginController& operator=(const LaunchAtLoginController&) = delete;

    Published<bool> isEnabled;
    Published<bool> requiresApproval;

    void refreshStatus();
    /// What is published follows the system, also after a failure.
    std::expected<void, LaunchAtLoginError> setEnabled(bool isOn);
    void openLoginItemsSettings() { loginItem_.openSettings(); }

private:
    Task<void> refreshInTask();

    LoginItem& loginItem_;
    Subscription appDidBecomeActiveObserver_;
    TaskScope tasks_;
};

} // namespace tolvo
