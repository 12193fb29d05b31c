#include "integration/app_update_controller.h"

#include "core/text.h"
#include "integration/app_update_notification.h"
#include "integration/url_resolution.h"

#include <utility>

namespace tolvo {

namespace {

/// Seconds that the start of the program has to itself.
constexpr double firstCheckDelay = 5;

} // namespace

AppUpdateController::AppUpdateController(MainLoop& loop, AppUpdateService& updateService,
                                         UserNotifications& userNotifications, URLOpening& urlOpener,
                                         SleepProviding& sleeper, double checkInterval)
    : updateService_(updateService),
      userNotifications_(userNotifications),
      urlOpener_(urlOpener),
      sleeper_(sleeper),
      checkInterval_(checkInterval),
      tasks_(loop) {}

void AppUpdateController::startPeriodicChecks() {
    stopPeriodicChecks();
    checkTask_ = tasks_.start(checkPeriodically());
}

void AppUpdateController::stopPeriodicChecks() {
    if (const auto task = std::exchange(checkTask_, std::nullopt))
        task->cancel();
}

Task<void> AppUpdateController::checkPeriodically() {
    co_await sleeper_.sleep(firstCheckDelay);
    while (true) {
        co_await check(Announcement::Post);
        co_await sleeper_.sleep(checkInterval_);
    }
}

Task<void> AppUpdateController::checkNow() {
    co_await check(Announcement::None);
}

Task<void> AppUpdateController::check(Announcement announcement) {
    const UpdateCheckResult result = co_await updateService_.checkForUpdate();
    const TaskContext context = co_await currentContext();
    // A reply may be there already when the task is told to stop.
    if (context.stopToken.stop_requested() || std::holds_alternative<CheckFailed>(result))
        co_return;
    const auto* found = std::get_if<AvailableUpdate>(&result);
    const auto known = availableUpdate.value();
    availableUpdate.set(found ? std::optional(*found) : std::nullopt);
    const bool isNew = found && (!known || known->buildNumber != found->buildNumber);
    if (isNew && announcement == Announcement::Post)
        co_await postNotification(*found);
}

Task<void> AppUpdateController::postNotification(AvailableUpdate update) {
    auto status = co_await userNotifications_.authorizationStatus();
    if (status == NotificationAuthorization::NotDetermined) {
        co_await userNotifications_.requestAuthorization();
        status = co_await userNotifications_.authorizationStatus();
    }
    if (status == NotificationAuthorization::Authorized)
        userNotifications_.add(appUpdateNotification(update));
}

void AppUpdateController::openDownload(const std::optional<std::string>& downloadUrl) {
    const auto& update = availableUpdate.value();
    if (!downloadUrl && !update)
        return;
    const auto url = URL::parse(trimmed(downloadUrl ? *downloadUrl : update->downloadUrl));
    if (url && isWebScheme(url->scheme()))
        urlOpener_.open(*url);
}

} // namespace tolvo
