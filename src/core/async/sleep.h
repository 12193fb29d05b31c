#pragma once

#include "core/async/resumption.h"
#include "core/async/task.h"

#include <functional>
#include <optional>

namespace tolvo {

/// Suspends the awaiting task until the delay has passed on its loop; throws CancellationError when it is cancelled
/// first.
class SleepAwaiter {
public:
    explicit SleepAwaiter(Seconds delay) : delay_(delay) {}
    SleepAwaiter(const SleepAwaiter&) = delete;
    SleepAwaiter& operator=(const SleepAwaiter&) = delete;

    bool await_ready() const noexcept { return false; }

    template<class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        const TaskContext& context = coroutine.promise().context;
        resumption_.arm(*context.loop, coroutine);
        timer_ = context.loop->after(delay_, [this] {
            hasElapsed_ = true;
            resumption_.resumeSoon();
        });
        stopCallback_.emplace(context.stopToken, [this] { cancel(); });
    }

    void await_resume() {
        stopCallback_.reset();
        if (!hasElapsed_)
            throw CancellationError();
    }

private:
    void cancel() {
        timer_.reset();
        resumption_.resumeSoon();
    }

    Seconds delay_;
    bool hasElapsed_ = false;
    LoopRegistration timer_;
    Resumption resumption_;
    std::optional<std::stop_callback<std::function<void()>>> stopCallback_;
};

[[nodiscard]] inline SleepAwaiter sleepFor(Seconds delay) {
    return SleepAwaiter(delay);
}

} // namespace tolvo
