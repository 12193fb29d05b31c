#include "core/async/off_main.h"
#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <stdexcept>
#include <string>

namespace tolvo::testing {
namespace {

template<class Function>
Task<void> runOffMain(Function function, std::string& result, PollLoop& loop) {
    try {
        result = co_await offMain(std::move(function));
    } catch (const std::exception& error) {
        result = error.what();
    }
    loop.quit();
}

std::string waitForStop(std::stop_token stopToken) {
    std::atomic_bool isStopped = false;
    const std::stop_callback callback(stopToken, [&] {
        isStopped = true;
        isStopped.notify_all();
    });
    isStopped.wait(false);
    return "stopped";
}

TEST(OffMain, GivesResultsAndExceptionsBackOnTheLoop) {
    PollLoop loop;
    TaskScope scope(loop);
    std::string result;
    scope.start(runOffMain([](std::stop_token) { return std::string("done"); }, result, loop));
    loop.run();
    EXPECT_EQ(result, "done");
    scope.start(runOffMain([](std::stop_token) -> std::string { throw std::runtime_error("no"); }, result, loop));
    loop.run();
    EXPECT_EQ(result, "no");
}

TEST(OffMain, TheFunctionHearsTheCancellationOfTheTaskAndTheDropOfItsScope) {
    PollLoop loop;
    std::string result;
    TaskScope scope(loop);
    const TaskHandle handle = scope.start(runOffMain(waitForStop, result, loop));
    loop.post([&] { loop.post([&] { handle.cancel(); }); });
    loop.run();
    EXPECT_EQ(result, "stopped");

    std::optional<TaskScope> dropped(std::in_place, loop);
    dropped->start(runOffMain(waitForStop, result, loop));
    loop.post([&] {
        loop.post([&] {
            dropped.reset();
            loop.quit();
        });
    });
    loop.run();
}

} // namespace
} // namespace tolvo::testing
