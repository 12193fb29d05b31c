#pragma once

#include "app/system_services.h"
#include "integration/app_update_controller.h"
#include "integration/app_update_service.h"
#include "integration/launch_at_login_controller.h"
#include "platform/linux/freedesktop_user_notifications.h"
#include "platform/linux/login_item_settings_program.h"
#include "platform/linux/nlohmann_json_reader.h"
#include "platform/linux/posix_process_information.h"
#include "platform/linux/posted_notification_center.h"
#include "platform/linux/xdg_autostart_login_item.h"

namespace tolvo {

/// What a program of the desktop has beyond its face: the update check with its notifications, and the start at login.
/// Building starts nothing.
class DesktopIntegration {
public:
    DesktopIntegration(SystemServices& system, URLOpening& urlOpener);
    DesktopIntegration(const DesktopIntegration&) = delete;
    DesktopIntegration& operator=(const DesktopIntegration&) = delete;

    /// From now on clicks on notifications are answered, and updates looked for.
    void start();
    void stop() { appUpdateController.stopPeriodicChecks(); }

private:
    NlohmannJSONReader jsonReader_;
    PosixProcessInformation processInformation_;
    FreedesktopUserNotifications userNotifications_;
    LoginItemSettingsProgram loginItemSettings_;
    XdgAutostartLoginItem loginItem_;
    AppUpdateService updateService_;

public:
    /// The face posts here when it comes to the front.
    PostedNotificationCenter notificationCenter;
    AppUpdateController appUpdateController;
    LaunchAtLoginController launchAtLoginController;
};

} // namespace tolvo
