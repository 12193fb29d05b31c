#include "integration/app_update_notification.h"

namespace tolvo {

namespace {

constexpr const char* typeKey = "type";
constexpr const char* updateType = "app-update";
constexpr const char* downloadURLKey = "downloadURL";

} // namespace

UserNotificationRequest appUpdateNotification(const AvailableUpdate& update) {
    return {.identifier = "app-update-" + std::to_string(update.buildNumber),
            .content = {.title = "Update Available",
                        .body = "Tolvo " + update.version + " is now available. Click to download.",
                        .hasDefaultSound = true,
                        .userInfo = {
                            {typeKey, updateType}, {"version", update.version}, {downloadURLKey, update.downloadUrl}}}};
}

void handleNotificationResponse(const NotificationUserInfo& userInfo, AppUpdateController& controller) {
    const auto type = userInfo.find(typeKey);
    if (type == userInfo.end() || type->second != updateType)
        return;
    const auto url = userInfo.find(downloadURLKey);
    controller.openDownload(url == userInfo.end() ? std::nullopt : std::optional(url->second));
}

} // namespace tolvo
