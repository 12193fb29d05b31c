#pragma once

#include "core/async/main_loop.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace tolvo {

/// The main loop of the desktop application: Qt's own, which lives as long as the application object. While Qt runs a
/// loop of its own inside a piece of work, as a dialog does, the queue goes on in order.
class QtMainLoop final : public MainLoop {
public:
    QtMainLoop();
    ~QtMainLoop() override;

    void post(Work work) override;
    LoopRegistration after(Seconds delay, Work work) override;
    LoopRegistration watch(int descriptor, DescriptorEvent event, Work work) override;
    MonotonicTime now() const override { return std::chrono::steady_clock::now(); }

    /// Runs until quit() is called; what is queued behind the quitting work is left. Gives the exit status.
    int run();
    void quit();

private:
    using TimerKey = std::pair<MonotonicTime, std::uint64_t>;
    class Receiver;

    void runPosted();
    void runDueTimers();
    void scheduleTimer();

    std::mutex postedMutex_;
    std::deque<Work> posted_;
    bool isWakeUpPending_ = false;
    bool isQuitting_ = false;
    std::uint64_t nextTimer_ = 0;
    std::map<TimerKey, Work> timers_;
    std::unique_ptr<Receiver> receiver_;
    QTimer timer_;
};

} // namespace tolvo
