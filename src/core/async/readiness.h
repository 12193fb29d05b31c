#pragma once

#include "core/async/resumption.h"
#include "core/async/task.h"

#include <functional>
#include <optional>

namespace tolvo {

/// Suspends the awaiting task until the descriptor is ready, or found broken, or the time has come, whichever is first;
/// throws CancellationError when it is cancelled before. It doesn't say which it was: who slept through both, because
/// the program was stopped, tries the descriptor and then looks at the clock. The descriptor outlives the wait.
class ReadinessAwaiter {
public:
    ReadinessAwaiter(int descriptor, DescriptorEvent event, MonotonicTime deadline)
        : descriptor_(descriptor), event_(event), deadline_(deadline) {}
    ReadinessAwaiter(const ReadinessAwaiter&) = delete;
    ReadinessAwaiter& operator=(const ReadinessAwaiter&) = delete;

    bool await_ready() const noexcept { return false; }

    template<class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        const TaskContext& context = coroutine.promise().context;
        resumption_.arm(*context.loop, coroutine);
        watch_ = context.loop->watch(descriptor_, event_, [this] { end(); });
        timer_ = context.loop->after(deadline_ - context.loop->now(), [this] { end(); });
        stopCallback_.emplace(context.stopToken, [this] { cancel(); });
    }

    void await_resume() {
        stopCallback_.reset();
        if (!hasEnded_)
            throw CancellationError();
    }

private:
    void end() {
        hasEnded_ = true;
        cancel();
    }

    void cancel() {
        watch_.reset();
        timer_.reset();
        resumption_.resumeSoon();
    }

    int descriptor_;
    DescriptorEvent event_;
    MonotonicTime deadline_;
    bool hasEnded_ = false;
    LoopRegistration watch_;
    LoopRegistration timer_;
    Resumption resumption_;
    std::optional<std::stop_callback<std::function<void()>>> stopCallback_;
};

[[nodiscard]] inline ReadinessAwaiter readinessOf(int descriptor, DescriptorEvent event, MonotonicTime deadline) {
    return {descriptor, event, deadline};
}

} // namespace tolvo
