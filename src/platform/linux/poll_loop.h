#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tolvo {

/// The main loop of programs without a display, over poll(2). Another thread's post wakes it through an eventfd.
class PollLoop final : public MainLoop {
public:
    PollLoop();
    ~PollLoop() override;

    void post(Work work) override;
    LoopRegistration after(Seconds delay, Work work) override;
    LoopRegistration watch(int descriptor, DescriptorEvent event, Work work) override;
    MonotonicTime now() const override { return std::chrono::steady_clock::now(); }

    /// Runs until quit() is called; what is queued behind the quitting work is left to the next run.
    void run();
    void quit() { isQuitting_ = true; }

private:
    struct Watch {
        int descriptor;
        short events;
        Work work;
        bool isRemoved = false;
    };
    using TimerKey = std::pair<MonotonicTime, std::uint64_t>;

    void setRunningThread(std::thread::id thread);
    void wait();
    /// Runs what is queued now, not what that posts; false when there was nothing.
    bool runPosted();
    void runDueTimers();
    int pollTimeoutMilliseconds();

    UniqueDescriptor wakeUp_;
    std::mutex postedMutex_;
    std::deque<Work> posted_;
    bool isWakeUpPending_ = false;
    std::thread::id runningThread_;
    std::uint64_t nextTimer_ = 0;
    std::map<TimerKey, Work> timers_;
    std::vector<std::shared_ptr<Watch>> watches_;
    bool isQuitting_ = false;
};

} // namespace tolvo
