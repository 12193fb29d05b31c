#pragma once

#include <functional>

namespace tolvo {

/// Tells that the machine is about to sleep and that it woke, as a pair. Main thread only.
class SleepWakeObserving {
public:
    SleepWakeObserving(const SleepWakeObserving&) = delete;
    SleepWakeObserving& operator=(const SleepWakeObserving&) = delete;
    virtual ~SleepWakeObserving() = default;

    std::function<void()> onWillSleep;
    std::function<void()> onDidWake;

    /// Both may be repeated without effect.
    virtual void startObserving() = 0;
    virtual void stopObserving() = 0;

protected:
    SleepWakeObserving() = default;
};

/// Never calls back.
class NoOpSleepWakeObserver final : public SleepWakeObserving {
public:
    void startObserving() override {}
    void stopObserving() override {}
};

} // namespace tolvo
