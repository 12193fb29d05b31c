#pragma once

#include "core/async/task_scope.h"
#include "core/sleep_providing.h"

#include <functional>
#include <optional>

namespace tolvo {

/// Polls, sleeps for the interval, and polls again. The sleep can be cut short: by a new interval, which then counts
/// in full from that moment without a poll, or by a request for a poll. Main thread only.
class InterruptiblePollingLoop {
public:
    using Poll = std::function<Task<void>()>;

    /// The interval is the seconds from the end of a poll to the start of the next; 0 or less counts as 0.
    InterruptiblePollingLoop(MainLoop& loop, SleepProviding& sleeper, double pollInterval, Poll poll);

    /// The first poll comes at once. Does nothing on a running loop.
    void start();
    /// Ends the loop; a poll in flight is cancelled, and is the last.
    void stop();
    void updatePollInterval(double pollInterval);
    /// Cuts a sleep short for one poll. During a poll it changes nothing: that poll's sleep is a full one.
    void requestImmediatePoll();

    bool isRunning() const { return pollingTask_.has_value(); }

private:
    Task<void> run();
    Task<void> sleepOnce();
    void interruptSleep();

    SleepProviding& sleeper_;
    Poll poll_;
    double pollInterval_;
    bool pendingImmediatePoll_ = false;
    std::optional<TaskHandle> pollingTask_;
    std::optional<TaskHandle> sleepTask_;
    TaskScope tasks_;
};

} // namespace tolvo
