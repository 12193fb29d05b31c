#include "platform/linux/posix_process_service.h"
#include "probes/shell_command_runner.h"
#include "tests/support/run_on_poll_loop.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <csignal>
#include <filesystem>

namespace tolvo::testing {
namespace {

using namespace commandRunnerError;

const std::string child = "/the/child";

std::ptrdiff_t openDescriptors() {
    std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

bool hasNoChild() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == -1 && errno == ECHILD;
}

CommandOutcome success(std::vector<std::string> arguments, std::string output) {
    return CommandExecutionResult{child, std::move(arguments), 0, std::move(output), ""};
}
CommandOutcome failure(CommandRunnerError error) {
    return std::unexpected(std::move(error));
}

/// The runner with real programs, on the real loop.
class ShellCommandRunnerTest : public ::testing::Test {
protected:
    CommandOutcome run(CommandRequest request) {
        std::optional<CommandOutcome> outcome;
        TaskScope scope(loop);
        scope.start(keepResult(runner.run(std::move(request)), outcome));
        runUntil(loop, [&] { return outcome.has_value(); });
        return outcome.value();
    }

    PollLoop loop;
    PosixProcessService service{loop, {{child, TOLVO_CHILD_PROGRAM}}};
    ShellCommandRunner runner{service, {child, "/missing"}};
    const std::ptrdiff_t descriptorsBefore = openDescriptors();
};

TEST_F(ShellCommandRunnerTest, TenThousandRunsHaveTheirOutcomesAndLeaveNoChildAndNoDescriptor) {
    const std::vector<std::string> arguments{"arguments", "a b", "", "$HOME;*", "\xc3\xa4"};
    const CommandOutcome dropped = failure(Cancelled{""});
    const std::vector<std::pair<CommandRequest, CommandOutcome>> kinds{
        {{child, arguments, 20}, success(arguments, "[a b][][$HOME;*][\xc3\xa4]")},
        {{child, {"exit", "3"}, 20}, failure(NonZeroExit{child, 3, "statistics", "warning"})},
        {{child, {"signal", "9"}, 20}, failure(NonZeroExit{child, 137, "", ""})},
        {{child, {"invalid", "0"}, 20}, failure(OutputDecodingFailed{child})},
        {{child, {"invalid", "1"}, 20}, failure(OutputDecodingFailed{child})},
        {{child, {"wait"}, 0.001}, failure(TimedOut{child, 0.001})},
        {{child, {"arguments"}, 0}, failure(TimedOut{child, 0})},
        {{child, {"arguments"}, -1}, failure(TimedOut{child, -1})},
        {{child, {"wait"}, 20}, failure(Cancelled{child})},
        {{child, {"wait"}, 20}, dropped},
        {{child, {std::string("a\0b", 3)}, 20}, failure(LaunchFailed{"Invalid argument"})},
        {{"/missing", {}, 20}, failure(LaunchFailed{"No such file or directory"})},
        {{"the/child", {}, 20}, failure(ExecutableNotAllowed{"the/child"})},
        {{"/the/child ", {}, 20}, failure(ExecutableNotAllowed{"/the/child "})},
        {{TOLVO_CHILD_PROGRAM, {}, 20}, failure(ExecutableNotAllowed{TOLVO_CHILD_PROGRAM})},
    };
    for (std::size_t runs = 0; runs < 10'000; runs += 3 * kinds.size()) {
        std::vector<std::optional<CommandOutcome>> outcomes(3 * kinds.size());
        TaskScope scope(loop);
        auto dropping = std::make_unique<TaskScope>(loop);
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            const auto& [request, expected] = kinds[i % kinds.size()];
            TaskScope& owner = expected == dropped ? *dropping : scope;
            const auto run = owner.start(keepResult(runner.run(request), outcomes[i]));
            if (expected == failure(Cancelled{child}))
                loop.post([&, run] { loop.post([run] { run.cancel(); }); });
        }
        loop.post([&] { loop.post([&] { dropping.reset(); }); });
        ASSERT_TRUE(runUntil(loop, [&] { return scope.runningCount() == 0 && !dropping; }));
        for (std::size_t i = 0; i < outcomes.size(); ++i)
            ASSERT_TRUE(outcomes[i].value_or(dropped) == kinds[i % kinds.size()].second) << i;
    }
    EXPECT_TRUE(runUntil(loop, hasNoChild));
    EXPECT_EQ(openDescriptors(), descriptorsBefore);
}

TEST_F(ShellCommandRunnerTest, TableOfThousandsOfSocketsFitsAndMoreTimesOut) {
    EXPECT_TRUE(run({child, {"bytes", "1000000"}, 20}) == success({"bytes", "1000000"}, std::string(1'000'000, 'x')));
    EXPECT_EQ(run({child, {"bytes", "1100000"}, 0.3}), failure(TimedOut{child, 0.3}));
}

TEST_F(ShellCommandRunnerTest, ChildInheritsNothingThatDisturbsIt) {
    sigset_t all, mask;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &mask);
    for (const int number : {SIGPIPE, SIGTERM, SIGCHLD})
        ::signal(number, SIG_IGN);
    ::setenv("LC_ALL", "tr_TR.UTF-8", 1);
    ::setenv("TOLVO_TEST", "kept", 1);
    const UniqueDescriptor leaky(::open("/dev/null", O_RDONLY));
    PosixProcessService fresh(loop);
    std::string output;
    const auto process = fresh.launch(TOLVO_CHILD_PROGRAM, {"inheritance"},
                                      [&](const ProcessTermination& ended) { output = ended.standardOutput; });
    EXPECT_TRUE(runUntil(loop, [&] { return !output.empty(); }));
    EXPECT_EQ(output, "C kept");
    for (const int number : {SIGPIPE, SIGTERM, SIGCHLD})
        ::signal(number, SIG_DFL);
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
}

TEST_F(ShellCommandRunnerTest, NeitherAGrandchildOnThePipesNorALateMainThreadMakesATimeOut) {
    EXPECT_EQ(run({child, {"orphan"}, 1}), success({"orphan"}, ""));
    const UniqueDescriptor ready(eventfd(1, 0));
    LoopRegistration late = loop.watch(ready.get(), DescriptorEvent::Readable, [&] {
        late.reset();
        ::usleep(100'000);
    });
    EXPECT_EQ(run({child, {"arguments"}, 0.05}), success({"arguments"}, ""));
}

TEST_F(ShellCommandRunnerTest, ChildThatDeclinesToEndIsReapedWhenItDoes) {
    EXPECT_EQ(run({child, {"stubborn"}, 0.2}), failure(TimedOut{child, 0.2}));
    EXPECT_EQ(openDescriptors(), descriptorsBefore + 1);
    EXPECT_FALSE(hasNoChild());
    EXPECT_TRUE(runUntil(loop, hasNoChild));

    ManualLoop manualLoop;
    PosixProcessService watched(manualLoop);
    EXPECT_TRUE(watched.launch(TOLVO_CHILD_PROGRAM, {"wait"}, [](const ProcessTermination&) { FAIL(); }));
    manualLoop.advance(10);
    EXPECT_EQ(openDescriptors(), descriptorsBefore);
    siginfo_t ended{};
    ::waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
    EXPECT_FALSE(watched.launch("/missing", {}, nullptr));
    EXPECT_TRUE(hasNoChild());
}

TEST_F(ShellCommandRunnerTest, OutOfDescriptorsAtAnyStepFailsTheLaunchAndLeavesNothing) {
    rlimit usual{};
    ::getrlimit(RLIMIT_NOFILE, &usual);
    const int lowestFree = UniqueDescriptor(::dup(0)).get();
    for (const rlim_t spare : {5u, 4u, 3u, 2u, 1u, 0u}) {
        const rlimit few{static_cast<rlim_t>(lowestFree) + spare, usual.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
        const CommandOutcome outcome = run({child, {}, 20});
        ::setrlimit(RLIMIT_NOFILE, &usual);
        EXPECT_EQ(outcome, spare == 5 ? success({}, "") : failure(LaunchFailed{"Too many open files"})) << spare;
    }
    EXPECT_EQ(openDescriptors(), descriptorsBefore);
    EXPECT_TRUE(runUntil(loop, [&] { return !service.launch("/missing", {}, nullptr) && hasNoChild(); }));
}

} // namespace
} // namespace tolvo::testing
