#pragma once

#include "core/async/signal.h"
#include "core/async/task_scope.h"

#include <deque>
#include <exception>
#include <expected>
#include <functional>
#include <optional>
#include <variant>

namespace tolvo {

namespace detail {

template<class T>
constexpr bool isFailureValue(const T&) {
    return false;
}
template<class T, class E>
constexpr bool isFailureValue(const std::expected<T, E>& value) {
    return !value.has_value();
}

} // namespace detail

/// Child tasks of the task that makes it, with their results in order of completion. A child that throws, or gives an
/// unexpected value, is a failure: the rest are cancelled and awaited before next() tells of it. The parent's
/// cancellation reaches all children. T is not void. Main thread only.
template<class T>
class TaskGroup {
public:
    /// The context is the parent's own: `TaskGroup<T> group(co_await currentContext())`.
    explicit TaskGroup(TaskContext parent)
        : children_(*parent.loop),
          parentStop_(parent.stopToken, [this] { children_.cancelAll(); }),
          parent_(std::move(parent)) {}
    TaskGroup(const TaskGroup&) = delete;
    TaskGroup& operator=(const TaskGroup&) = delete;

    void add(Task<T> child) {
        ++pending_;
        const TaskHandle handle = children_.start(run(std::move(child)));
        if (parent_.stopToken.stop_requested())
            handle.cancel();
    }

    void cancelAll() { children_.cancelAll(); }

    /// The next result, or nothing when all have been given. A failure is given (a value) or rethrown (an exception)
    /// once every other child has ended; their results are dropped.
    Task<std::optional<T>> next() {
        while (outcomes_.empty() && pending_ > 0)
            co_await arrival_.wait(OnCancellation::KeepWaiting);
        if (outcomes_.empty())
            co_return std::nullopt;
        Outcome outcome = std::move(outcomes_.front());
        outcomes_.pop_front();
        if (isFailure(outcome))
            co_await endTheRest();
        if (outcome.index() == 1)
            std::rethrow_exception(std::get<1>(std::move(outcome)));
        co_return std::get<0>(std::move(outcome));
    }

private:
    using Outcome = std::variant<T, std::exception_ptr>;

    static bool isFailure(const Outcome& outcome) {
        return outcome.index() == 1 || detail::isFailureValue(std::get<0>(outcome));
    }

    Task<void> run(Task<T> child) {
        std::optional<Outcome> outcome;
        try {
            outcome.emplace(std::in_place_index<0>, co_await std::move(child));
        } catch (...) {
            outcome.emplace(std::in_place_index<1>, std::current_exception());
        }
        --pending_;
        outcomes_.push_back(std::move(*outcome));
        arrival_.notify();
    }

    Task<void> endTheRest() {
        children_.cancelAll();
        while (pending_ > 0)
            co_await arrival_.wait(OnCancellation::KeepWaiting);
        outcomes_.clear();
    }

    std::deque<Outcome> outcomes_;
    std::size_t pending_ = 0;
    Signal arrival_;
    TaskScope children_;
    std::stop_callback<std::function<void()>> parentStop_;
    TaskContext parent_;
};

} // namespace tolvo
