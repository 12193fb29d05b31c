#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_process_service.h"
#include "platform/linux/tool_paths.h"
#include "platform/linux/tool_server_process_service.h"
#include "tests/support/run_on_poll_loop.h"
#include "tests/tools/sandbox.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace tolvo {
namespace {

/// The tools as the application runs them, but for one that is somebody else's.
class ToolServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (const auto problem = test::enterSandbox())
            GTEST_SKIP() << *problem;
    }

    std::unique_ptr<RunningProcess> launch(const std::string& executable, const std::vector<std::string>& arguments,
                                           std::optional<ProcessTermination>& end) {
        auto process =
            service.launch(executable, arguments, [&end](ProcessTermination told) { end = std::move(told); });
        EXPECT_TRUE(process);
        return std::move(process.value());
    }

    ProcessTermination run(const std::string& executable, const std::vector<std::string>& arguments) {
        std::optional<ProcessTermination> end;
        const auto process = launch(executable, arguments, end);
        EXPECT_TRUE(testing::runUntil(loop, [&] { return end.has_value(); }));
        return end.value_or(ProcessTermination{});
    }

    /// What runs below this process.
    static std::vector<pid_t> children() {
        std::ifstream file("/proc/self/task/" + std::to_string(::getpid()) + "/children");
        return {std::istream_iterator<pid_t>(file), {}};
    }

    /// The last to go: servers and what they run end once nobody has use for them, each test's own before the next.
    const struct Ending {
        ~Ending() {
            while (::waitpid(-1, nullptr, 0) > 0) {
            }
        }
    } ending;
    const PosixProcessService::ProgramPaths paths{{"/usr/bin/dig", "/bin/echo"},
                                                  {"/usr/sbin/ipconfig", test::toolPath("ipconfig")},
                                                  {"/usr/sbin/scutil", test::toolPath("scutil")},
                                                  {"/sbin/ping", test::toolPath("ping")}};
    const std::vector<std::string> lookUp{"getifaddr", "nowhere"};
    PollLoop loop;
    PosixProcessService ordinary{loop, paths};
    ToolServerProcessService service{loop, ordinary, paths,
                                     servingProgram(std::filesystem::path(test::toolPath("netstat")).parent_path())};
};

TEST_F(ToolServerTest, AnswersOurToolsWithinOneProcessAndStartsOthers) {
    EXPECT_EQ(run("/usr/bin/dig", {"a b", ""}).standardOutput, "a b \n");
    EXPECT_TRUE(children().empty());
    const ProcessTermination refused = run("/usr/sbin/ipconfig", {"getifaddr", ""});
    EXPECT_EQ(refused.status, 64);
    EXPECT_EQ(refused.standardOutput, "");
    EXPECT_TRUE(refused.standardError.starts_with("usage: ipconfig ")) << refused.standardError;
    const auto server = children();
    EXPECT_EQ(server.size(), 1U);
    // One that needs a process of its own gets it from the server.
    EXPECT_TRUE(run("/usr/sbin/scutil", {"--nc", "list"}).standardOutput.starts_with("Available network"));
    EXPECT_EQ(run("/usr/sbin/ipconfig", lookUp).status, 1);
    EXPECT_EQ(children(), server);
}

TEST_F(ToolServerTest, RunsThatWaitEndWhenAskedAndLeaveTheServerToOthers) {
    // Whom the system lets ping decides whether the server waits itself or has the installed ping do so.
    for (const char* groups : {"0 2147483647", "1 0"}) {
        std::ofstream("/proc/sys/net/ipv4/ping_group_range") << groups;
        std::optional<ProcessTermination> asked, dropped;
        const auto waiting = launch("/sbin/ping", {"-c", "2", "127.0.0.1"}, asked);
        launch("/sbin/ping", {"-c", "2", "127.0.0.1"}, dropped).reset();
        const auto server = children();
        EXPECT_EQ(run("/usr/sbin/ipconfig", lookUp).status, 1);
        EXPECT_TRUE(waiting->isRunning());
        waiting->terminate();
        EXPECT_TRUE(testing::runUntil(loop, [&] { return !waiting->isRunning(); }));
        EXPECT_TRUE(testing::runUntil(loop, [&] { return asked.has_value(); }));
        EXPECT_EQ(asked->status, 128 + SIGTERM);
        EXPECT_EQ(run("/usr/sbin/ipconfig", lookUp).status, 1);
        EXPECT_FALSE(dropped);
        EXPECT_EQ(children(), server);
    }
}

TEST_F(ToolServerTest, RunsOfAServerThatDiesOrIsStuckAreStartedByThemselves) {
    for (const bool dies : {true, false}) {
        EXPECT_EQ(run("/usr/sbin/ipconfig", lookUp).status, 1);
        const auto server = children();
        ASSERT_FALSE(server.empty());
        ::kill(server.back(), SIGSTOP);
        std::optional<ProcessTermination> end, endOfAsked;
        const auto process = launch("/usr/sbin/ipconfig", lookUp, end);
        const auto asked = launch("/usr/sbin/ipconfig", lookUp, endOfAsked);
        if (dies)
            ::kill(server.back(), SIGKILL);
        else
            asked->terminate();
        EXPECT_TRUE(testing::runUntil(loop, [&] { return end && endOfAsked; }));
        EXPECT_EQ(end->status, 1);
        EXPECT_EQ(endOfAsked->status, dies ? 1 : 128 + SIGKILL);
        EXPECT_FALSE(process->isRunning() || asked->isRunning());
    }
}

} // namespace
} // namespace tolvo
