#pragma once

#include "core/async/task.h"

#include <functional>
#include <map>
#include <string>

namespace tolvo {

enum class NotificationAuthorization { NotDetermined, Denied, Authorized };

/// What a notification carries for the program itself.
using NotificationUserInfo = std::map<std::string, std::string>;

struct UserNotificationContent {
    std::string title;
    /// Plain text.
    std::string body;
    bool hasDefaultSound = false;
    NotificationUserInfo userInfo;

    bool operator==(const UserNotificationContent&) const = default;
};

struct UserNotificationRequest {
    /// A request takes the place of an earlier one with the same identifier.
    std::string identifier;
    UserNotificationContent content;

    bool operator==(const UserNotificationRequest&) const = default;
};

/// Shows notifications to the user, beside whatever is in front. Main thread only.
class UserNotifications {
public:
    UserNotifications(const UserNotifications&) = delete;
    UserNotifications& operator=(const UserNotifications&) = delete;
    virtual ~UserNotifications() = default;

    /// Called with a notification's user info when the user clicks it.
    std::function<void(const NotificationUserInfo& userInfo)> onResponse;

    virtual Task<NotificationAuthorization> authorizationStatus() = 0;
    /// Asks the user for alerts and sounds, and returns when the user has answered; the answer is the status.
    virtual Task<void> requestAuthorization() = 0;
    /// Shows it at once, or as soon as there is somebody who shows notifications. A failure is not told.
    virtual void add(UserNotificationRequest request) = 0;

protected:
    UserNotifications() = default;
};

} // namespace tolvo
