#pragma once

#include "core/async/main_loop.h"

#include <cstdint>
#include <deque>
#include <map>
#include <utility>

namespace tolvo::testing {

/// The loop of the tests: nothing runs unless the test says so, and time is what the test makes it.
class ManualLoop final : public MainLoop {
public:
    void post(Work work) override { posted_.push_back(std::move(work)); }

    LoopRegistration after(Seconds delay, Work work) override {
        const auto ticks = std::chrono::round<MonotonicTime::duration>(std::max(delay, Seconds(0)));
        const TimerKey key(now_ + ticks, nextTimer_++);
        timers_.emplace(key, std::move(work));
        return LoopRegistration([this, key] { timers_.erase(key); });
    }

    /// No descriptor ever becomes ready here.
    LoopRegistration watch(int, DescriptorEvent, Work) override { return {}; }

    MonotonicTime now() const override { return now_; }

    /// Runs queued work until there is none.
    void runUntilIdle() {
        while (!posted_.empty()) {
            auto work = std::move(posted_.front());
            posted_.pop_front();
            work();
        }
    }

    /// Lets time pass. Timers fire in order of deadline, then of creation, and the queue runs dry between two of them.
    void advance(double seconds) {
        runUntilIdle();
        const MonotonicTime end = now_ + std::chrono::round<MonotonicTime::duration>(Seconds(seconds));
        while (!timers_.empty() && timers_.begin()->first.first <= end) {
            auto timer = timers_.extract(timers_.begin());
            now_ = timer.key().first;
            timer.mapped()();
            runUntilIdle();
        }
        now_ = end;
    }

    std::size_t timerCount() const { return timers_.size(); }
    double elapsed() const { return Seconds(now_ - MonotonicTime{}).count(); }

private:
    using TimerKey = std::pair<MonotonicTime, std::uint64_t>;

    MonotonicTime now_{};
    std::uint64_t nextTimer_ = 0;
    std::deque<Work> posted_;
    std::map<TimerKey, Work> timers_;
};

} // namespace tolvo::testing
