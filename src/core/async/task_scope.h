#pragma once

#include "core/async/signal.h"
#include "core/async/task.h"

#include <cstddef>
#include <list>
#include <memory>

namespace tolvo {

class TaskScope;

namespace detail {

enum class TaskOutcome { Running, Completed, Cancelled };

struct StartedTask {
    explicit StartedTask(MainLoop& loop) : loop(loop) {}
    MainLoop& loop;
    std::stop_source stopSource;
    std::coroutine_handle<> frame;
    TaskOutcome outcome = TaskOutcome::Running;
    Signal ended;
    Resumption start;
    std::list<std::shared_ptr<StartedTask>>* owner = nullptr;
    std::list<std::shared_ptr<StartedTask>>::iterator position;
};

} // namespace detail

/// A started task as others see it: it can be cancelled and waited for. It doesn't own the task; its scope does.
class TaskHandle {
public:
    explicit TaskHandle(std::shared_ptr<detail::StartedTask> task) : task_(std::move(task)) {}

    /// Requests a stop. The task hears it at its present or next wait; nothing of it runs inside this call.
    void cancel() const { task_->stopSource.request_stop(); }
    bool hasEnded() const { return task_->outcome != detail::TaskOutcome::Running; }

    /// Waits until the task has ended, whatever the waiting task is told meanwhile, and says whether it ran to its end
    /// (true) or was cut, by a CancellationError or by the end of its scope (false).
    Task<bool> completion() const;

    friend bool operator==(const TaskHandle& a, const TaskHandle& b) { return a.task_ == b.task_; }

private:
    std::shared_ptr<detail::StartedTask> task_;
};

/// Owns the tasks that an object starts; it is that object's last member. When it goes, it requests a stop of all of
/// them and drops their frames. A task must not destroy its own scope. An exception other than CancellationError that
/// leaves a started task ends the program. Main thread only.
class TaskScope {
public:
    explicit TaskScope(MainLoop& loop) : loop_(loop) {}
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;
    ~TaskScope();

    /// Starts the task through the loop's queue, so nothing of it runs inside this call. A task that is cancelled
    /// before its first step still runs, and hears it at its first wait.
    TaskHandle start(Task<void> task);

    void cancelAll() const;
    std::size_t runningCount() const { return tasks_.size(); }
    MainLoop& loop() const { return loop_; }

private:
    MainLoop& loop_;
    std::list<std::shared_ptr<detail::StartedTask>> tasks_;
};

} // namespace tolvo
