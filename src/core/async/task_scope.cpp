#include "core/async/task_scope.h"

#include <vector>

namespace tolvo {

namespace {

using detail::StartedTask;
using detail::TaskOutcome;

/// The outermost frame of a started task. It gives itself back when its body has ended.
class RootFrame {
public:
    class promise_type {
    public:
        promise_type(const Task<void>&, std::shared_ptr<StartedTask> task)
            : context{&task->loop, task->stopSource.get_token()}, task_(std::move(task)) {}

        RootFrame get_return_object() noexcept {
            return RootFrame(std::coroutine_handle<promise_type>::from_promise(*this));
        }
        std::suspend_always initial_suspend() const noexcept { return {}; }

        struct FinalAwaiter {
            bool await_ready() const noexcept { return false; }
            void await_suspend(std::coroutine_handle<promise_type> ended) const noexcept {
                const auto task = ended.promise().task_;
                task->frame = nullptr;
                task->owner->erase(task->position);
                ended.destroy();
                task->ended.notify();
            }
            void await_resume() const noexcept {}
        };
        FinalAwaiter final_suspend() const noexcept { return {}; }

        void return_void() const noexcept { task_->outcome = TaskOutcome::Completed; }
        void unhandled_exception() const noexcept {
            try {
                throw;
            } catch (const CancellationError&) {
                task_->outcome = TaskOutcome::Cancelled;
            }
        }

        TaskContext context;

    private:
        std::shared_ptr<StartedTask> task_;
    };

    explicit RootFrame(std::coroutine_handle<> frame) : frame(frame) {}
    std::coroutine_handle<> frame;
};

RootFrame runToEnd(Task<void> body, std::shared_ptr<StartedTask>) {
    co_await std::move(body);
}

} // namespace

Task<bool> TaskHandle::completion() const {
    const auto task = task_;
    while (task->outcome == TaskOutcome::Running)
        co_await task->ended.wait(OnCancellation::KeepWaiting);
    co_return task->outcome == TaskOutcome::Completed;
}

TaskHandle TaskScope::start(Task<void> body) {
    auto task = std::make_shared<StartedTask>(loop_);
    task->owner = &tasks_;
    task->position = tasks_.insert(tasks_.end(), task);
    task->frame = runToEnd(std::move(body), task).frame;
    task->start.arm(loop_, task->frame);
    task->start.resumeSoon();
    return TaskHandle(std::move(task));
}

void TaskScope::cancelAll() const {
    const std::vector<std::shared_ptr<StartedTask>> running(tasks_.begin(), tasks_.end());
    for (const auto& task : running)
        task->stopSource.request_stop();
}

TaskScope::~TaskScope() {
    cancelAll();
    while (!tasks_.empty()) {
        const auto task = tasks_.front();
        tasks_.pop_front();
        task->start.drop();
        task->outcome = TaskOutcome::Cancelled;
        std::exchange(task->frame, nullptr).destroy();
        task->ended.notify();
    }
}

} // namespace tolvo
