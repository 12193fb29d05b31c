#include "platform/linux/poll_loop.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <limits>
#include <system_error>

namespace tolvo {

namespace {

/// Beyond this a wait is as good as endless; it keeps the sum with the clock in range.
constexpr Seconds longestDelay = std::chrono::hours(24 * 365);

/// A task that resumes another posts, and so on for a few steps, which needn't look at the descriptors in between. Work
/// that posts itself for ever must not keep these waiting.
constexpr int mostRounds = 8;

} // namespace

PollLoop::PollLoop() : wakeUp_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (!wakeUp_)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

PollLoop::~PollLoop() {
    // What is dropped may hold registrations with this loop, and these take themselves off members that are still
    // there.
    std::exchange(posted_, {}).clear();
    std::exchange(timers_, {}).clear();
    std::exchange(watches_, {}).clear();
}

void PollLoop::post(Work work) {
    bool mustWake = false;
    {
        const std::lock_guard lock(postedMutex_);
        posted_.push_back(std::move(work));
        // The running loop looks at the queue before it sleeps.
        mustWake = std::this_thread::get_id() != runningThread_ && !std::exchange(isWakeUpPending_, true);
    }
    if (mustWake) {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(wakeUp_.get(), &one, sizeof one);
    }
}

LoopRegistration PollLoop::after(Seconds delay, Work work) {
    // No number is no delay.
    const Seconds clamped = delay > Seconds(0) ? std::min(delay, longestDelay) : Seconds(0);
    // Rounded up, so that a timer never comes before its time.
    const TimerKey key(now() + std::chrono::ceil<MonotonicTime::duration>(clamped), nextTimer_++);
    timers_.emplace(key, std::move(work));
    return LoopRegistration([this, key] { timers_.erase(key); });
}

LoopRegistration PollLoop::watch(int descriptor, DescriptorEvent event, Work work) {
    const short events = event == DescriptorEvent::Readable ? POLLIN : POLLOUT;
    auto watch = std::make_shared<Watch>(descriptor, events, std::move(work));
    watches_.push_back(watch);
    return LoopRegistration([this, watch] {
        watch->isRemoved = true;
        std::erase(watches_, watch);
    });
}

void PollLoop::run() {
    isQuitting_ = false;
    setRunningThread(std::this_thread::get_id());
    while (!isQuitting_) {
        runDueTimers();
        for (int round = 0; round < mostRounds && !isQuitting_ && runPosted(); ++round) {
        }
        if (!isQuitting_)
            wait();
    }
    setRunningThread({});
}

void PollLoop::setRunningThread(std::thread::id thread) {
    const std::lock_guard lock(postedMutex_);
    runningThread_ = thread;
}

bool PollLoop::runPosted() {
    std::deque<Work> batch;
    {
        const std::lock_guard lock(postedMutex_);
        batch.swap(posted_);
    }
    const bool hasWork = !batch.empty();
    while (!batch.empty() && !isQuitting_) {
        auto work = std::move(batch.front());
        batch.pop_front();
        work();
    }
    const std::lock_guard lock(postedMutex_);
    posted_.insert(posted_.begin(), std::move_iterator(batch.begin()), std::move_iterator(batch.end()));
    return hasWork;
}

void PollLoop::runDueTimers() {
    const MonotonicTime due = now();
    while (!timers_.empty() && timers_.begin()->first.first <= due && !isQuitting_) {
        auto timer = timers_.extract(timers_.begin());
        timer.mapped()();
    }
}

int PollLoop::pollTimeoutMilliseconds() {
    {
        const std::lock_guard lock(postedMutex_);
        if (!posted_.empty())
            return 0;
    }
    if (timers_.empty())
        return -1;
    const auto remaining = std::chrono::ceil<std::chrono::milliseconds>(timers_.begin()->first.first - now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(remaining, 0, std::numeric_limits<int>::max()));
}

void PollLoop::wait() {
    const auto watches = watches_;
    std::vector<pollfd> descriptors{{wakeUp_.get(), POLLIN, 0}};
    for (const auto& watch : watches)
        descriptors.push_back({watch->descriptor, watch->events, 0});
    if (::poll(descriptors.data(), descriptors.size(), pollTimeoutMilliseconds()) <= 0)
        return;
    if (descriptors[0].revents != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const auto size = ::read(wakeUp_.get(), &count, sizeof count);
        // What is posted in between wakes nobody, and needn't: the queue is looked at before the next sleep.
        const std::lock_guard lock(postedMutex_);
        isWakeUpPending_ = false;
    }
    for (std::size_t i = 0; i < watches.size() && !isQuitting_; ++i) {
        if (descriptors[i + 1].revents != 0 && !watches[i]->isRemoved)
            watches[i]->work();
    }
}

} // namespace tolvo
