#pragma once

#include "platform/services/notification_center.h"

#include <memory>
#include <utility>
#include <vector>

namespace tolvo {

/// Passes on what the front end posts. Main thread only.
class PostedNotificationCenter final : public NotificationCenter {
public:
    Subscription addObserver(ApplicationNotification notification, Handler handler) override {
        std::erase_if(observers_, [](const auto& observer) { return observer.second.expired(); });
        auto token = std::make_shared<Handler>(std::move(handler));
        observers_.emplace_back(notification, token);
        return Subscription(std::move(token));
    }

    void post(ApplicationNotification notification) const {
        const auto observers = observers_;
        for (const auto& [wanted, handler] : observers) {
            if (const auto observer = wanted == notification ? handler.lock() : nullptr)
                (*observer)();
        }
    }

private:
    std::vector<std::pair<ApplicationNotification, std::weak_ptr<Handler>>> observers_;
};

} // namespace tolvo
