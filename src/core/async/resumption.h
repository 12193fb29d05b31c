#pragma once

#include "core/async/main_loop.h"

#include <coroutine>
#include <memory>

namespace tolvo {

/// The right to resume one suspended coroutine, once, through the loop's queue. It is a member of the awaiter, so a
/// frame that is dropped while suspended takes the right with it, also when the resuming is queued already.
/// Main thread only, but for what trigger() gives.
class Resumption {
public:
    Resumption() = default;
    Resumption(const Resumption&) = delete;
    Resumption& operator=(const Resumption&) = delete;
    ~Resumption() { drop(); }

    void arm(MainLoop& loop, std::coroutine_handle<> coroutine) { slot_ = std::make_shared<Slot>(loop, coroutine); }

    /// Resumes the coroutine in a later turn of the loop. Only the first call counts.
    void resumeSoon() {
        if (slot_ && !std::exchange(slot_->isQueued, true))
            post(slot_);
    }

    /// Gives the right up: the coroutine is not resumed any more.
    void drop() {
        if (slot_)
            slot_->coroutine = nullptr;
    }

    /// What another thread calls, at most once, to have the coroutine resumed. It may outlive the awaiter.
    std::move_only_function<void()> trigger() const {
        return [slot = slot_] { post(slot); };
    }

private:
    struct Slot {
        Slot(MainLoop& loop, std::coroutine_handle<> coroutine) : loop(loop), coroutine(coroutine) {}
        MainLoop& loop;
        std::coroutine_handle<> coroutine;
        bool isQueued = false;
    };

    static void post(const std::shared_ptr<Slot>& slot) {
        slot->loop.post([slot] {
            if (auto coroutine = std::exchange(slot->coroutine, nullptr))
                coroutine.resume();
        });
    }

    std::shared_ptr<Slot> slot_;
};

} // namespace tolvo
