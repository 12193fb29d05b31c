#pragma once

#include "core/sleep_wake_observing.h"
#include "platform/services/sleep_notifications.h"

#include <vector>

namespace tolvo {

/// Passes the system's notices of sleep and wake on while it observes. The notifications outlive it.
class WorkspaceSleepWakeObserver final : public SleepWakeObserving {
public:
    explicit WorkspaceSleepWakeObserver(SleepNotifications& notificationCenter);

    void startObserving() override;
    void stopObserving() override;

private:
    SleepNotifications& notificationCenter_;
    /// Sleep's, then wake's, while observing.
    std::vector<Subscription> observerTokens_;
};

} // namespace tolvo
