#include "core/async/off_main.h"
#include "core/async/one_shot.h"
#include "core/async/published.h"
#include "core/async/sleep.h"
#include "core/async/task_scope.h"
#include "core/async/when_all.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <string>

namespace tolvo::testing {
namespace {

Task<int> immediately(int value) {
    co_return value;
}
Task<int> later(double seconds, int value) {
    co_await sleepFor(Seconds(seconds));
    co_return value;
}

Task<std::int64_t> sumOfAwaits(int count) {
    std::int64_t sum = 0;
    for (int i = 0; i < count; ++i)
        sum += co_await immediately(1);
    co_return sum;
}

TEST(Task, MillionAwaitsThatNeverSuspendNeedNoStack) {
    ManualLoop loop;
    EXPECT_EQ(runTask(loop, sumOfAwaits(1'000'000)), 1'000'000);
}

Task<int> both() {
    const auto [a, b] = co_await whenAll(later(2, 1), later(1, 2));
    co_return a * 10 + b;
}

TEST(Task, WhenAllRunsAtTheSameTimeAndKeepsOrder) {
    ManualLoop loop;
    EXPECT_EQ(runTask(loop, both()), 12);
    EXPECT_NEAR(loop.elapsed(), 2, 0.1);
}

} // namespace
} // namespace tolvo::testing
