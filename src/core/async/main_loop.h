#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace tolvo {

/// A point on the monotonic clock. It is for measuring and waiting; what is shown or stored uses the wall clock.
using MonotonicTime = std::chrono::steady_clock::time_point;

/// A span of time in seconds, as all intervals and time-outs of the system are given.
using Seconds = std::chrono::duration<double>;

/// Something that a loop will do, or goes on doing, for as long as this object lives. Main thread only.
class [[nodiscard]] LoopRegistration {
public:
    LoopRegistration() = default;
    explicit LoopRegistration(std::move_only_function<void()> cancel) : cancel_(std::move(cancel)) {}
    LoopRegistration(LoopRegistration&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    LoopRegistration& operator=(LoopRegistration&& other) noexcept {
        if (this != &other) {
            reset();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~LoopRegistration() { reset(); }

    void reset() {
        if (auto cancel = std::exchange(cancel_, nullptr))
            cancel();
    }

private:
    std::move_only_function<void()> cancel_;
};

enum class DescriptorEvent { Readable, Writable };

/// The one loop on which all state of the program lives. It is made in main and handed down; it outlives everything
/// that was given it. Work runs one piece after the other, never inside the call that asked for it.
class MainLoop {
public:
    using Work = std::move_only_function<void()>;

    MainLoop(const MainLoop&) = delete;
    MainLoop& operator=(const MainLoop&) = delete;
    virtual ~MainLoop() = default;

    /// Runs work once, after everything posted before. The only operation that other threads may call.
    virtual void post(Work work) = 0;

    /// Runs work once when the delay (negative counts as 0) has passed, unless the registration goes first.
    /// Calls that are due at the same time run in order of their deadlines, then of their creation.
    virtual LoopRegistration after(Seconds delay, Work work) = 0;

    /// Runs work each time the descriptor is found ready, also when it is found broken, until the registration goes.
    virtual LoopRegistration watch(int descriptor, DescriptorEvent event, Work work) = 0;

    /// The monotonic clock, virtual in tests.
    virtual MonotonicTime now() const = 0;

protected:
    MainLoop() = default;
};

} // namespace tolvo
