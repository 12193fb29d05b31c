#include "platform/qt/qt_main_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSocketNotifier>

#include <algorithm>
#include <memory>

namespace tolvo {

namespace {

/// QTimer counts milliseconds in an int; a longer wait is done in pieces.
constexpr auto longestWait = std::chrono::milliseconds(std::chrono::hours(24));
/// Beyond this a wait is as good as endless; it keeps the sum with the clock in range.
constexpr Seconds longestDelay = std::chrono::hours(24 * 365);

} // namespace

/// Stands in the main thread, where the events that other threads post are delivered.
class QtMainLoop::Receiver final : public QObject {
public:
    explicit Receiver(QtMainLoop& loop) : loop_(loop) {}

protected:
    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        loop_.runPosted();
        return true;
    }

private:
    QtMainLoop& loop_;
};

QtMainLoop::QtMainLoop() : receiver_(std::make_unique<Receiver>(*this)) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer_, &QTimer::timeout, receiver_.get(), [this] { runDueTimers(); });
}

QtMainLoop::~QtMainLoop() = default;

void QtMainLoop::post(Work work) {
    // Under the lock until the event is posted: the destructor of a loop whose last work ends it must not overtake it.
    const std::lock_guard lock(postedMutex_);
    posted_.push_back(std::move(work));
    if (!std::exchange(isWakeUpPending_, true))
        QCoreApplication::postEvent(receiver_.get(), new QEvent(QEvent::User));
}

LoopRegistration QtMainLoop::after(Seconds delay, Work work) {
    const Seconds clamped = std::clamp(delay, Seconds(0), longestDelay);
    const TimerKey key(now() + std::chrono::ceil<MonotonicTime::duration>(clamped), nextTimer_++);
    timers_.emplace(key, std::move(work));
    if (timers_.begin()->first == key)
        scheduleTimer();
    return LoopRegistration([this, key] {
        const bool wasNext = !timers_.empty() && timers_.begin()->first == key;
        timers_.erase(key);
        if (wasNext)
            scheduleTimer();
    });
}

LoopRegistration QtMainLoop::watch(int descriptor, DescriptorEvent event, Work work) {
    const auto type = event == DescriptorEvent::Readable ? QSocketNotifier::Read : QSocketNotifier::Write;
    auto shared = std::make_shared<Work>(std::move(work));
    auto notifier = std::make_unique<QSocketNotifier>(descriptor, type);
    QObject::connect(notifier.get(), &QSocketNotifier::activated, receiver_.get(), [this, shared] {
        if (!isQuitting_)
            (*shared)();
    });
    // A registration may go within its own work, which has to live until its end.
    return LoopRegistration([notifier = std::move(notifier)]() mutable {
        notifier->setEnabled(false);
        notifier.release()->deleteLater();
    });
}

int QtMainLoop::run() {
    isQuitting_ = false;
    return QCoreApplication::exec();
}

void QtMainLoop::quit() {
    isQuitting_ = true;
    QCoreApplication::quit();
}

void QtMainLoop::runPosted() {
    std::size_t count = 0;
    {
        const std::lock_guard lock(postedMutex_);
        isWakeUpPending_ = false;
        count = posted_.size();
    }
    // Only what is queued now: work that posts itself again must not keep timers and descriptors waiting.
    for (; count > 0 && !isQuitting_; --count) {
        Work work;
        {
            const std::lock_guard lock(postedMutex_);
            if (posted_.empty())
                return;
            work = std::move(posted_.front());
            posted_.pop_front();
        }
        work();
    }
}

void QtMainLoop::runDueTimers() {
    const MonotonicTime due = now();
    while (!timers_.empty() && timers_.begin()->first.first <= due && !isQuitting_) {
        auto timer = timers_.extract(timers_.begin());
        timer.mapped()();
    }
    scheduleTimer();
}

void QtMainLoop::scheduleTimer() {
    if (timers_.empty()) {
        timer_.stop();
        return;
    }
    // Rounded up, so that a timer never comes before its time.
    const auto remaining = std::chrono::ceil<std::chrono::milliseconds>(timers_.begin()->first.first - now());
    timer_.start(std::clamp(remaining, std::chrono::milliseconds(0), longestWait));
}

} // namespace tolvo
