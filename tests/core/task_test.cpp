#include "core/async/one_shot.h"
#include "core/async/sleep.h"
#include "core/async/task_scope.h"
#include "core/async/when_all.h"
#include "tests/support/counted.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tolvo::testing {
namespace {

using Log = std::vector<std::string>;

Task<int> immediately(int value) {
    co_return value;
}

Task<int> later(double seconds, int value) {
    const Counted guard;
    co_await sleepFor(Seconds(seconds));
    co_return value;
}

Task<int> throwAfter(double seconds) {
    const Counted guard;
    co_await sleepFor(Seconds(seconds));
    throw std::runtime_error("broken");
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
    EXPECT_EQ(loop.elapsed(), 0);
}

Task<void> sleepThenNote(Log& log) {
    try {
        co_await sleepFor(Seconds(10));
        log.push_back("slept");
    } catch (const CancellationError&) {
        log.push_back("cancelled");
        throw;
    }
}

Task<void> noteCompletion(TaskHandle handle, Log& log) {
    log.push_back(co_await handle.completion() ? "completed" : "cut");
}

TEST(TaskScope, CancellingRunsNothingInsideTheCallAndEndsTheTask) {
    ManualLoop loop;
    Log log;
    TaskScope scope(loop);
    const TaskHandle sleeping = scope.start(sleepThenNote(log));
    scope.start(noteCompletion(sleeping, log));
    loop.runUntilIdle();
    sleeping.cancel();
    sleeping.cancel();
    EXPECT_TRUE(log.empty());
    loop.runUntilIdle();
    EXPECT_EQ(log, (Log{"cancelled", "cut"}));
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST(TaskScope, DroppingItTellsWhoeverWaitsElsewhere) {
    ManualLoop loop;
    Log log;
    TaskScope watching(loop);
    {
        TaskScope scope(loop);
        watching.start(noteCompletion(scope.start(sleepThenNote(log)), log));
        loop.runUntilIdle();
    }
    loop.runUntilIdle();
    EXPECT_EQ(log, Log{"cut"});
}

/// One of everything that can suspend, nested, each frame holding counted objects.
Task<void> everyKindOfWait(OneShot<int> shot, Signal signal, int& result) {
    const Counted guard;
    result += co_await later(1, 1);
    result += co_await shot.take();
    co_await signal.wait();
    const auto [a, b] = co_await whenAll(later(3, 10), later(2, 100));
    result += a + b;
    TaskGroup<int> group(co_await currentContext());
    for (int i = 1; i <= 3; ++i)
        group.add(later(i, 1000));
    while (const auto value = co_await group.next())
        result += *value;
    OneShot<int> settled;
    settled.set(10000);
    result += co_await settled.take();
}

enum class Ending { Cancel, DropScope };

/// Runs everyKindOfWait for a number of half-second steps, ends it there, and gives its result so far.
int runAndEndAt(int step, Ending ending, bool& didEnd) {
    ManualLoop loop;
    const OneShot<int> shot;
    const Signal signal;
    int result = 0;
    {
        TaskScope scope(loop);
        const TaskHandle handle = scope.start(everyKindOfWait(shot, signal, result));
        for (int i = 0; i < step; ++i) {
            loop.advance(0.5);
            if (i == 3)
                shot.set(1);
            if (i == 5)
                signal.notify();
        }
        if (ending == Ending::Cancel) {
            handle.cancel();
            loop.runUntilIdle();
            EXPECT_EQ(scope.runningCount(), 0U) << "step " << step;
        }
        didEnd = handle.hasEnded();
    }
    // What a producer still does after the task is gone reaches nobody.
    shot.set(7);
    signal.notify();
    loop.advance(60);
    EXPECT_EQ(loop.timerCount(), 0U) << "step " << step;
    EXPECT_EQ(Counted::living(), 0) << "step " << step;
    return result;
}

TEST(Task, CanBeCancelledOrDroppedAtEverySuspensionPoint) {
    for (const Ending ending : {Ending::Cancel, Ending::DropScope}) {
        bool didEnd = false;
        int step = 0;
        int result = 0;
        for (; step < 60 && result != 13112; ++step)
            result = runAndEndAt(step, ending, didEnd);
        EXPECT_EQ(result, 13112);
        EXPECT_GT(step, 15);
    }
}

Task<bool> takeOrCancelled(OneShot<int> shot) {
    try {
        co_await shot.take();
        co_return true;
    } catch (const CancellationError&) {
        co_return false;
    }
}

Task<void> store(Task<bool> task, std::optional<bool>& result) {
    result = co_await std::move(task);
}

TEST(OneShot, FirstValueCountsAndWinsOverALaterCancellation) {
    ManualLoop loop;
    TaskScope scope(loop);
    const OneShot<int> shot;
    std::optional<bool> didTake;
    const TaskHandle handle = scope.start(store(takeOrCancelled(shot), didTake));
    loop.runUntilIdle();
    EXPECT_TRUE(shot.set(1));
    EXPECT_FALSE(shot.set(2));
    handle.cancel();
    loop.runUntilIdle();
    EXPECT_EQ(didTake, true);
}

Task<std::string> failingPair(double failureAt, double otherAt) {
    const auto started = (co_await currentContext()).loop->now();
    std::string what;
    try {
        co_await whenAll(throwAfter(failureAt), later(otherAt, 1));
    } catch (const std::runtime_error& error) {
        what = error.what();
    }
    const auto now = (co_await currentContext()).loop->now();
    co_return what + " after " + std::to_string((now - started) / std::chrono::seconds(1));
}

TEST(WhenAll, FirstFailureCancelsAndAwaitsTheRest) {
    ManualLoop loop;
    EXPECT_EQ(runTask(loop, failingPair(1, 100)), "broken after 1");
    EXPECT_EQ(runTask(loop, failingPair(2, 1)), "broken after 2");
    EXPECT_EQ(Counted::living(), 0);
}

Task<std::vector<int>> allOf(int count) {
    std::vector<Task<int>> tasks;
    for (int i = 0; i < count; ++i)
        tasks.push_back(later(count - i, i));
    return whenAll(std::move(tasks));
}

TEST(WhenAll, RunsAtTheSameTimeAndKeepsTheOrderOfArguments) {
    ManualLoop loop;
    EXPECT_EQ(runTask(loop, allOf(4)), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_NEAR(loop.elapsed(), 4, 0.1);
    EXPECT_EQ(runTask(loop, allOf(0)), std::vector<int>{});
}

using Outcome = std::expected<int, std::string>;

Task<Outcome> outcomeAfter(double seconds, Outcome outcome, Log& log) {
    try {
        co_await sleepFor(Seconds(seconds));
    } catch (const CancellationError&) {
        log.push_back("cancelled " + std::to_string(outcome.value_or(-1)));
        throw;
    }
    co_return outcome;
}

Task<Log> drainGroup() {
    Log log;
    TaskGroup<Outcome> group(co_await currentContext());
    group.add(outcomeAfter(3, 3, log));
    group.add(outcomeAfter(1, 1, log));
    group.add(outcomeAfter(2, std::unexpected("bad"), log));
    while (const auto outcome = co_await group.next())
        log.push_back(*outcome ? std::to_string(**outcome) : outcome->error());
    co_return log;
}

TEST(TaskGroup, GivesResultsInOrderOfCompletionAndEndsTheRestBeforeAFailure) {
    ManualLoop loop;
    EXPECT_EQ(runTask(loop, drainGroup()), (Log{"1", "cancelled 3", "bad"}));
}

} // namespace
} // namespace tolvo::testing
