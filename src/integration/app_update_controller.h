#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/sleep_providing.h"
#include "integration/app_update_service.h"
#include "integration/url_opening.h"
#include "platform/services/user_notifications.h"

#include <optional>
#include <string>

namespace tolvo {

/// Asks once a day whether there is a newer build, publishes it, and tells the user once in a run of each. Nothing is
/// downloaded but by the user's browser. Main thread only.
class AppUpdateController final {
public:
    /// The interval is in seconds.
    AppUpdateController(MainLoop& loop, AppUpdateService& updateService, UserNotifications& userNotifications,
                        URLOpening& urlOpener, SleepProviding& sleeper, double checkInterval);
    AppUpdateController(const AppUpdateController&) = delete;
    AppUpdateController& operator=(const AppUpdateController&) = delete;

    /// A check that fails leaves it as it is.
    Published<std::optional<AvailableUpdate>> availableUpdate;

    /// The first check is made after five seconds. A loop that runs already is replaced.
    void startPeriodicChecks();
    void stopPeriodicChecks();
    /// A check at the user's request, which posts no notification. The controller outlives the task.
    Task<void> checkNow();
    /// Without a URL, the available update's. Does nothing with what is no web address.
    void openDownload(const std::optional<std::string>& downloadUrl = std::nullopt);

private:
    enum class Announcement { Post, None };

    Task<void> checkPeriodically();
    Task<void> check(Announcement announcement);
    Task<void> postNotification(AvailableUpdate update);

    AppUpdateService& updateService_;
    UserNotifications& userNotifications_;
    URLOpening& urlOpener_;
    SleepProviding& sleeper_;
    const double checkInterval_;
    std::optional<TaskHandle> checkTask_;
    TaskScope tasks_;
};

} // namespace tolvo
