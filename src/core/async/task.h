#pragma once

#include "core/async/main_loop.h"

#include <coroutine>
#include <exception>
#include <stop_token>
#include <utility>
#include <variant>

namespace tolvo {

/// Thrown by a wait whose task was cancelled. The one exception that is used for control flow.
class CancellationError final : public std::exception {
public:
    const char* what() const noexcept override { return "the task was cancelled"; }
};

/// What a task hands on to the tasks that it awaits: where it runs and how it hears that it is to stop.
struct TaskContext {
    MainLoop* loop = nullptr;
    std::stop_token stopToken;
};

namespace detail {

class TaskPromiseBase {
public:
    std::suspend_always initial_suspend() const noexcept { return {}; }

    struct FinalAwaiter {
        bool await_ready() const noexcept { return false; }
        template<class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept {
            return ended.promise().continuation;
        }
        void await_resume() const noexcept {}
    };
    FinalAwaiter final_suspend() const noexcept { return {}; }

    TaskContext context;
    std::coroutine_handle<> continuation = std::noop_coroutine();
};

template<class T>
class TaskPromise final : public TaskPromiseBase {
public:
    std::coroutine_handle<TaskPromise> get_return_object() noexcept {
        return std::coroutine_handle<TaskPromise>::from_promise(*this);
    }
    template<class Value>
    void return_value(Value&& value) {
        outcome_.template emplace<1>(std::forward<Value>(value));
    }
    void unhandled_exception() noexcept { outcome_.template emplace<2>(std::current_exception()); }
    T takeResult() {
        if (outcome_.index() == 2)
            std::rethrow_exception(std::get<2>(std::move(outcome_)));
        return std::get<1>(std::move(outcome_));
    }

private:
    std::variant<std::monostate, T, std::exception_ptr> outcome_;
};

template<>
class TaskPromise<void> final : public TaskPromiseBase {
public:
    std::coroutine_handle<TaskPromise> get_return_object() noexcept {
        return std::coroutine_handle<TaskPromise>::from_promise(*this);
    }
    void return_void() const noexcept {}
    void unhandled_exception() noexcept { exception_ = std::current_exception(); }
    void takeResult() {
        if (exception_)
            std::rethrow_exception(std::exchange(exception_, nullptr));
    }

private:
    std::exception_ptr exception_;
};

} // namespace detail

/// A lazy coroutine of the main thread: its body starts when it is awaited, and runs at most once. The awaiting task's
/// loop and stop token become its own. A task that is dropped while suspended takes its frame, and all that the frame
/// waits for, with it. Its parameters are values, or references to what outlives it.
template<class T = void>
class [[nodiscard]] Task {
public:
    using promise_type = detail::TaskPromise<T>;
    using Value = T;

    Task(std::coroutine_handle<promise_type> coroutine) noexcept : coroutine_(coroutine) {}
    Task(Task&& other) noexcept : coroutine_(std::exchange(other.coroutine_, nullptr)) {}
    Task& operator=(Task&& other) noexcept {
        if (this != &other) {
            drop();
            coroutine_ = std::exchange(other.coroutine_, nullptr);
        }
        return *this;
    }
    ~Task() { drop(); }

    class Awaiter {
    public:
        explicit Awaiter(std::coroutine_handle<promise_type> coroutine) noexcept : coroutine_(coroutine) {}
        bool await_ready() const noexcept { return false; }
        template<class Promise>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> parent) noexcept {
            coroutine_.promise().context = parent.promise().context;
            coroutine_.promise().continuation = parent;
            return coroutine_;
        }
        T await_resume() { return coroutine_.promise().takeResult(); }

    private:
        std::coroutine_handle<promise_type> coroutine_;
    };

    Awaiter operator co_await() && noexcept { return Awaiter(coroutine_); }

private:
    void drop() noexcept {
        if (auto coroutine = std::exchange(coroutine_, nullptr))
            coroutine.destroy();
    }

    std::coroutine_handle<promise_type> coroutine_;
};

/// `co_await currentContext()` gives the context of the awaiting task, without suspending it.
class CurrentContextAwaiter {
public:
    bool await_ready() const noexcept { return false; }
    template<class Promise>
    bool await_suspend(std::coroutine_handle<Promise> coroutine) noexcept {
        context_ = coroutine.promise().context;
        return false;
    }
    TaskContext await_resume() noexcept { return std::move(context_); }

private:
    TaskContext context_;
};

[[nodiscard]] inline CurrentContextAwaiter currentContext() {
    return {};
}

} // namespace tolvo
