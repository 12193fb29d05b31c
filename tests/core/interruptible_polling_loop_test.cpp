#include "core/async/sleep.h"
#include "core/interruptible_polling_loop.h"
#include "core/task_sleeper.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <vector>

namespace tolvo::testing {
namespace {

class PollingLoop : public ::testing::Test {
protected:
    Task<void> poll() {
        polls.push_back(loop.elapsed());
        if (pollSeconds > 0)
            co_await sleepFor(Seconds(pollSeconds));
    }

    std::vector<double> pollsAfter(double seconds) {
        loop.advance(seconds);
        return std::exchange(polls, {});
    }

    using Times = std::vector<double>;

    ManualLoop loop;
    TaskSleeper sleeper;
    Times polls;
    double pollSeconds = 0;
    InterruptiblePollingLoop polling{loop, sleeper, 4, [this] { return poll(); }};
};

TEST_F(PollingLoop, PollsAtOnceAndThenAfterEachInterval) {
    polling.start();
    polling.start();
    EXPECT_TRUE(polls.empty());
    EXPECT_EQ(pollsAfter(3.999), Times{0});
    EXPECT_EQ(pollsAfter(0.001), Times{4});
    EXPECT_EQ(pollsAfter(8), (Times{8, 12}));
}

TEST_F(PollingLoop, TheIntervalCountsFromTheEndOfThePoll) {
    pollSeconds = 1;
    polling.start();
    EXPECT_EQ(pollsAfter(10), (Times{0, 5, 10}));
}

TEST_F(PollingLoop, NewIntervalTakesEffectAtOnceWithoutAPoll) {
    polling.start();
    EXPECT_EQ(pollsAfter(1), Times{0});
    polling.updatePollInterval(0.5);
    EXPECT_EQ(pollsAfter(0.499), Times{});
    EXPECT_EQ(pollsAfter(0.001), Times{1.5});
    polling.updatePollInterval(4);
    EXPECT_EQ(pollsAfter(4), Times{5.5});
}

TEST_F(PollingLoop, RequestsDuringOneSleepGiveOnePollAndAFullSleep) {
    polling.start();
    loop.advance(1);
    polling.requestImmediatePoll();
    polling.requestImmediatePoll();
    EXPECT_EQ(pollsAfter(3.9), (Times{0, 1}));
    EXPECT_EQ(pollsAfter(0.1), Times{5});
    polling.requestImmediatePoll();
    polling.start();
    EXPECT_EQ(pollsAfter(0), Times{5}) << "a start of a running loop keeps the request";
}

TEST_F(PollingLoop, RequestDuringAPollNeitherAddsAPollNorShortensTheSleep) {
    pollSeconds = 1;
    polling.start();
    loop.advance(0.5);
    polling.requestImmediatePoll();
    EXPECT_EQ(pollsAfter(4.4), Times{0});
    EXPECT_EQ(pollsAfter(0.1), Times{5});
    EXPECT_EQ(pollsAfter(5), Times{10}) << "the sleep that ended by itself used the request up";
}

TEST_F(PollingLoop, StopEndsASleepWithoutAPollAndForgetsARequest) {
    polling.start();
    loop.advance(1);
    polling.requestImmediatePoll();
    polling.stop();
    polling.stop();
    EXPECT_EQ(pollsAfter(10), Times{0});
    polling.start();
    EXPECT_EQ(pollsAfter(3), Times{11});
}

TEST_F(PollingLoop, RestartDuringTheOldSleepLeavesTheNewOneInterruptible) {
    polling.start();
    loop.advance(1);
    polling.stop();
    polling.start();
    EXPECT_EQ(pollsAfter(1), (Times{0, 1}));
    polling.requestImmediatePoll();
    EXPECT_EQ(pollsAfter(3.5), Times{2});
    EXPECT_EQ(pollsAfter(0.5), Times{6});
}

TEST_F(PollingLoop, StopDuringAPollMakesItTheLast) {
    pollSeconds = 1;
    polling.start();
    loop.advance(0.5);
    polling.stop();
    EXPECT_EQ(pollsAfter(20), Times{0});
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(PollingLoop, NegativeIntervalPollsWithoutPause) {
    pollSeconds = 1;
    polling.updatePollInterval(-3);
    polling.start();
    EXPECT_EQ(pollsAfter(3), (Times{0, 1, 2, 3}));
}

} // namespace
} // namespace tolvo::testing
