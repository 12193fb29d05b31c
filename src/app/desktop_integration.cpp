#include "app/desktop_integration.h"

#include "app/process_environment.h"
#include "integration/app_update_notification.h"

namespace tolvo {

namespace {

/// Seconds between two looks for an update: a day.
constexpr double updateCheckInterval = 86'400;

} // namespace

DesktopIntegration::DesktopIntegration(SystemServices& system, URLOpening& urlOpener)
    : userNotifications_(system.loop),
      loginItemSettings_(system.processService, system.workspace),
      loginItem_(XdgAutostartLoginItem::standardPath(), XdgAutostartLoginItem::runningProgram(),
                 environmentVariable("XDG_CURRENT_DESKTOP").value_or(""), loginItemSettings_),
      updateService_(system.urlSession, jsonReader_, system.bundle, processInformation_),
      appUpdateController(system.loop, updateService_, userNotifications_, urlOpener, system.sleeper,
                          updateCheckInterval),
      launchAtLoginController(system.loop, loginItem_, notificationCenter) {}

void DesktopIntegration::start() {
    userNotifications_.onResponse = [this](const NotificationUserInfo& userInfo) {
        handleNotificationResponse(userInfo, appUpdateController);
    };
    appUpdateController.startPeriodicChecks();
}

} // namespace tolvo
