#pragma once

#include "core/async/task_group.h"

#include <optional>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace tolvo {

namespace detail {

template<class T>
Task<std::monostate> storeResult(Task<T> task, std::optional<T>& result) {
    result.emplace(co_await std::move(task));
    co_return std::monostate{};
}

template<class... Ts, std::size_t... Index>
Task<std::tuple<Ts...>> whenAllIndexed(std::index_sequence<Index...>, Task<Ts>... tasks) {
    std::tuple<std::optional<Ts>...> results;
    TaskGroup<std::monostate> group(co_await currentContext());
    (group.add(storeResult<Ts>(std::move(tasks), std::get<Index>(results))), ...);
    while (co_await group.next()) {
    }
    co_return std::tuple<Ts...>(std::move(*std::get<Index>(results))...);
}

} // namespace detail

/// Runs the tasks at the same time and gives all results, in the order of the arguments. If one throws, the others are
/// cancelled and awaited, and the exception goes on. A result that is an unexpected value is a result like any other.
template<class... Ts>
Task<std::tuple<Ts...>> whenAll(Task<Ts>... tasks) {
    return detail::whenAllIndexed<Ts...>(std::index_sequence_for<Ts...>{}, std::move(tasks)...);
}

/// The same for a list of tasks of one type.
template<class T>
Task<std::vector<T>> whenAll(std::vector<Task<T>> tasks) {
    std::vector<std::optional<T>> results(tasks.size());
    TaskGroup<std::monostate> group(co_await currentContext());
    for (std::size_t i = 0; i < tasks.size(); ++i)
        group.add(detail::storeResult<T>(std::move(tasks[i]), results[i]));
    while (co_await group.next()) {
    }
    std::vector<T> values;
    values.reserve(results.size());
    for (auto& result : results)
        values.push_back(std::move(*result));
    co_return values;
}

} // namespace tolvo
