#pragma once

#include "integration/app_update_controller.h"
#include "integration/available_update.h"
#include "platform/services/user_notifications.h"

namespace tolvo {

/// What tells the user of an update.
UserNotificationRequest appUpdateNotification(const AvailableUpdate& update);

/// What a click on a notification does: the update's opens its download, any other nothing.
void handleNotificationResponse(const NotificationUserInfo& userInfo, AppUpdateController& controller);

} // namespace tolvo
