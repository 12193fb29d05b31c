#pragma once

#include "core/async/resumption.h"
#include "core/async/task.h"

#include <exception>
#include <functional>
#include <optional>
#include <thread>
#include <utility>
#include <variant>

namespace tolvo {

/// Awaits a blocking function on a thread of its own and resumes on the loop with its result or its exception. The
/// function is given a stop token that hears the task's cancellation; the wait lasts until the function has returned,
/// and so does the dropping of a task that is in it. The function shares no state with the main thread.
template<class Function>
class OffMainAwaiter {
public:
    using Result = std::invoke_result_t<Function, std::stop_token>;
    static_assert(!std::is_void_v<Result>, "give a value, such as what was done");

    explicit OffMainAwaiter(Function function) : function_(std::move(function)) {}
    OffMainAwaiter(const OffMainAwaiter&) = delete;
    OffMainAwaiter& operator=(const OffMainAwaiter&) = delete;

    bool await_ready() const noexcept { return false; }

    template<class Promise>
    void await_suspend(std::coroutine_handle<Promise> coroutine) {
        const TaskContext& context = coroutine.promise().context;
        resumption_.arm(*context.loop, coroutine);
        thread_ = std::jthread([this, resume = resumption_.trigger()](const std::stop_token& stopToken) mutable {
            run(stopToken);
            resume();
        });
        stopCallback_.emplace(context.stopToken, [this] { thread_.request_stop(); });
    }

    Result await_resume() {
        stopCallback_.reset();
        thread_.join();
        if (outcome_.index() == 2)
            std::rethrow_exception(std::get<2>(outcome_));
        return std::get<1>(std::move(outcome_));
    }

private:
    void run(const std::stop_token& stopToken) noexcept {
        try {
            outcome_.template emplace<1>(function_(stopToken));
        } catch (...) {
            outcome_.template emplace<2>(std::current_exception());
        }
    }

    Function function_;
    std::variant<std::monostate, Result, std::exception_ptr> outcome_;
    Resumption resumption_;
    std::jthread thread_;
    std::optional<std::stop_callback<std::function<void()>>> stopCallback_;
};

template<class Function>
[[nodiscard]] OffMainAwaiter<Function> offMain(Function function) {
    return OffMainAwaiter<Function>(std::move(function));
}

} // namespace tolvo
