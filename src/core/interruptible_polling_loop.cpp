#include "core/interruptible_polling_loop.h"

#include <algorithm>
#include <utility>

namespace tolvo {

InterruptiblePollingLoop::InterruptiblePollingLoop(MainLoop& loop, SleepProviding& sleeper, double pollInterval,
                                                   Poll poll)
    : sleeper_(sleeper), poll_(std::move(poll)), pollInterval_(std::max(pollInterval, 0.0)), tasks_(loop) {}

void InterruptiblePollingLoop::start() {
    if (pollingTask_)
        return;
    pendingImmediatePoll_ = false;
    pollingTask_ = tasks_.start(run());
}

void InterruptiblePollingLoop::stop() {
    if (sleepTask_)
        std::exchange(sleepTask_, std::nullopt)->cancel();
    if (pollingTask_)
        std::exchange(pollingTask_, std::nullopt)->cancel();
    pendingImmediatePoll_ = false;
}

void InterruptiblePollingLoop::updatePollInterval(double pollInterval) {
    pollInterval_ = std::max(pollInterval, 0.0);
    interruptSleep();
}

void InterruptiblePollingLoop::requestImmediatePoll() {
    pendingImmediatePoll_ = true;
    interruptSleep();
}

void InterruptiblePollingLoop::interruptSleep() {
    if (sleepTask_)
        sleepTask_->cancel();
}

Task<void> InterruptiblePollingLoop::sleepOnce() {
    co_await sleeper_.sleep(pollInterval_);
}

Task<void> InterruptiblePollingLoop::run() {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    co_await poll_();
    while (!stopToken.stop_requested()) {
        // The sleep is a task of its own, so that it can be cancelled without cancelling the loop.
        sleepTask_ = tasks_.start(sleepOnce());
        const bool didSleepToItsEnd = co_await sleepTask_->completion();
        // After a stop, the field belongs to whatever was started since.
        if (stopToken.stop_requested())
            co_return;
        sleepTask_.reset();
        if (didSleepToItsEnd || pendingImmediatePoll_) {
            pendingImmediatePoll_ = false;
            co_await poll_();
        }
    }
}

} // namespace tolvo
