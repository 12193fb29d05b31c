#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <functional>

namespace tolvo::testing {

/// Lets Qt work until the condition holds; false if it doesn't within the limit.
inline bool eventually(const std::function<bool()>& condition, int limitMilliseconds = 10000) {
    const QDeadlineTimer limit(limitMilliseconds);
    while (!condition() && !limit.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    return condition();
}

} // namespace tolvo::testing
