#pragma once

#include "core/async/resumption.h"
#include "core/async/task.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace tolvo {

/// Whether a wait ends with CancellationError when its task is cancelled, or goes on to its own end.
enum class OnCancellation { Throw, KeepWaiting };

/// Wakes the tasks that wait for it at that moment. Copies are the same signal, so that a producer can hold one and
/// stay harmless after the waiting task is gone. Main thread only.
class Signal {
public:
    class Awaiter;

    void notify() const {
        for (Resumption* waiter : std::exchange(*waiters_, {}))
            waiter->resumeSoon();
    }

    [[nodiscard]] Awaiter wait(OnCancellation onCancellation = OnCancellation::Throw) const;

private:
    std::shared_ptr<std::vector<Resumption*>> waiters_ = std::make_shared<std::vector<Resumption*>>();
};

class Signal::Awaiter {
public:
    Awaiter(std::shared_ptr<std::vector<Resumption*>> waiters, OnCancellation onCancellation)
        : waiters_(std::move(waiters)), onCancellation_(onCancellation) {}
    Awaiter(const Awaiter&) = delete;
    Awaiter& operator=(const Awaiter&) = delete;
    ~Awaiter() { leave(); }

    bool await_ready() const noexcept { return false; }

    template<class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        const TaskContext& context = coroutine.promise().context;
        resumption_.arm(*context.loop, coroutine);
        waiters_->push_back(&resumption_);
        if (onCancellation_ == OnCancellation::Throw)
            stopCallback_.emplace(context.stopToken, [this] { cancel(); });
    }

    void await_resume() {
        stopCallback_.reset();
        if (wasCancelled_)
            throw CancellationError();
    }

private:
    void cancel() {
        // A wait that was notified before it was cancelled has its end already.
        if (!leave())
            return;
        wasCancelled_ = true;
        resumption_.resumeSoon();
    }

    bool leave() { return std::erase(*waiters_, &resumption_) > 0; }

    std::shared_ptr<std::vector<Resumption*>> waiters_;
    OnCancellation onCancellation_;
    bool wasCancelled_ = false;
    Resumption resumption_;
    std::optional<std::stop_callback<std::function<void()>>> stopCallback_;
};

inline Signal::Awaiter Signal::wait(OnCancellation onCancellation) const {
    return {waiters_, onCancellation};
}

} // namespace tolvo
