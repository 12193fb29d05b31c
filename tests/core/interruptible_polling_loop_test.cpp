#include "core/async/sleep.h"
#include "core/interruptible_polling_loop.h"
#include "core/task_sleeper.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace tolvo::testing {
namespace {

struct World {
    explicit World(double pollSeconds) : pollSeconds(pollSeconds) {}

    /// Words are seconds that pass, a new interval (=0.5), or events.
    void run(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            if (word.front() == '=')
                polling.updatePollInterval(std::stod(word.substr(1)));
            else if (word == "start")
                polling.start();
            else if (word == "stop")
                polling.stop();
            else if (word == "ask")
                polling.requestImmediatePoll();
            else
                loop.advance(std::stod(word));
        }
    }
    Task<void> poll() {
        polls.push_back(loop.elapsed());
        if (pollSeconds > 0)
            co_await sleepFor(Seconds(pollSeconds));
    }

    double pollSeconds;
    ManualLoop loop;
    TaskSleeper sleeper;
    std::vector<double> polls;
    InterruptiblePollingLoop polling{loop, sleeper, 4, [this] { return poll(); }};
};

TEST(PollingLoop, PollsWhenItsEventsSaySo) {
    const struct {
        const char* name;
        double pollSeconds;
        const char* script;
        std::vector<double> polls;
    } cases[] = {
        {"nothing runs inside the start", 0, "start", {}},
        {"at once, then after each interval", 0, "start start 3.999", {0}},
        {"no later than that", 0, "start 12", {0, 4, 8, 12}},
        {"the interval counts from the poll's end", 1, "start 10", {0, 5, 10}},
        {"a new interval begins at once, without a poll", 0, "start 1 =0.5 0.499", {0}},
        {"and lasts in full", 0, "start 1 =0.5 0.5 =4 4", {0, 1.5, 5.5}},
        {"a negative interval is no pause", 1, "=-3 start 3", {0, 1, 2, 3}},
        {"requests in one sleep give one poll and a full sleep", 0, "start 1 ask ask 3.9", {0, 1}},
        {"a start of a running loop keeps the request", 0, "start 1 ask start 4", {0, 1, 5}},
        {"a request in a poll adds none", 1, "start 0.5 ask 4.4", {0}},
        {"and is used up by the sleep that ends by itself", 1, "start 0.5 ask 9.5", {0, 5, 10}},
        {"a stop ends the sleep and forgets the request", 0, "start 1 ask stop stop 10 start 3", {0, 11}},
        {"a sleep after a restart can be interrupted", 0, "start 1 stop start 1 ask 4", {0, 1, 2, 6}},
        {"a poll that is stopped is the last", 1, "start 0.5 stop 20", {0}},
    };
    for (const auto& [name, pollSeconds, script, polls] : cases) {
        World world(pollSeconds);
        world.run(script);
        EXPECT_EQ(world.polls, polls) << name;
        world.run("stop 2");
        EXPECT_EQ(world.loop.timerCount(), 0U) << name;
        EXPECT_LE(world.polls.size(), polls.size() + (polls.empty() ? 1 : 0)) << name;
    }
}

} // namespace
} // namespace tolvo::testing
