#pragma once

#include "core/async/published.h"

#include <functional>

namespace tolvo {

enum class SleepNotification { WillSleep, DidWake };

/// The system's notices of its own sleep. WillSleep and DidWake alternate, beginning with WillSleep; the system waits a
/// moment for what observers begin. A system that doesn't tell gives none. Main thread only.
class SleepNotifications {
public:
    using Handler = std::function<void()>;

    SleepNotifications(const SleepNotifications&) = delete;
    SleepNotifications& operator=(const SleepNotifications&) = delete;
    virtual ~SleepNotifications() = default;

    /// The handler is called, in order of addition, until the token goes. The token may outlive this object.
    virtual Subscription addObserver(SleepNotification notification, Handler handler) = 0;

protected:
    SleepNotifications() = default;
};

} // namespace tolvo
