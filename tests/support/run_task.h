#pragma once

#include "core/async/task_scope.h"
#include "tests/support/manual_loop.h"

#include <optional>

namespace tolvo::testing {

template<class T>
Task<void> keepResult(Task<T> task, std::optional<T>& result) {
    result.emplace(co_await std::move(task));
}

/// Runs a task on the manual loop, with all the virtual time that it needs up to the limit, and gives its result;
/// nothing if it did not end or was cancelled.
template<class T>
std::optional<T> runTask(ManualLoop& loop, Task<T> task, double limitSeconds = 3600) {
    std::optional<T> result;
    TaskScope scope(loop);
    const TaskHandle handle = scope.start(keepResult(std::move(task), result));
    loop.runUntilIdle();
    for (double passed = 0; !handle.hasEnded() && passed < limitSeconds; passed += 0.05)
        loop.advance(0.05);
    return result;
}

} // namespace tolvo::testing
