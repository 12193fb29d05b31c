#include "core/workspace_sleep_wake_observer.h"

namespace tolvo {

namespace {

void callIfSet(const std::function<void()>& callback) {
    if (callback)
        callback();
}

} // namespace

WorkspaceSleepWakeObserver::WorkspaceSleepWakeObserver(SleepNotifications& notificationCenter)
    : notificationCenter_(notificationCenter) {}

void WorkspaceSleepWakeObserver::startObserving() {
    if (!observerTokens_.empty())
        return;
    observerTokens_.push_back(
        notificationCenter_.addObserver(SleepNotification::WillSleep, [this] { callIfSet(onWillSleep); }));
    observerTokens_.push_back(
        notificationCenter_.addObserver(SleepNotification::DidWake, [this] { callIfSet(onDidWake); }));
}

void WorkspaceSleepWakeObserver::stopObserving() {
    observerTokens_.clear();
}

} // namespace tolvo
