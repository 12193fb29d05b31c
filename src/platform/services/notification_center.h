#pragma once

#include "core/async/published.h"

#include <functional>

namespace tolvo {

enum class ApplicationNotification { DidBecomeActive };

/// The program's notices of itself. Main thread only.
class NotificationCenter {
public:
    using Handler = std::function<void()>;

    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;
    virtual ~NotificationCenter() = default;

    /// The handler is called, in order of addition, until the token goes. The token may outlive this object.
    virtual Subscription addObserver(ApplicationNotification notification, Handler handler) = 0;

protected:
    NotificationCenter() = default;
};

} // namespace tolvo
