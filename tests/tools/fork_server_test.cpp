#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_process_service.h"
#include "platform/linux/tool_paths.h"
#include "tests/tools/sandbox.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace tolvo {
namespace {

/// The tools as the application runs them, but for one that is somebody else's.
class ForkServerTest : public testing::Test {
protected:
    ForkServerTest()
        : forking(forkingProgram(std::filesystem::path(test::toolPath("netstat")).parent_path())),
          service(loop, {{"/usr/bin/dig", "/bin/echo"}, {"/usr/sbin/ipconfig", test::toolPath("ipconfig")}}, forking) {}

    ProcessTermination run(const std::string& executable, const std::vector<std::string>& arguments) {
        ProcessTermination result;
        const auto process = service.launch(executable, arguments, [&](ProcessTermination termination) {
            result = std::move(termination);
            loop.quit();
        });
        EXPECT_TRUE(process);
        loop.run();
        return result;
    }

    /// What runs below this process.
    static std::vector<pid_t> children() {
        std::ifstream file("/proc/self/task/" + std::to_string(::getpid()) + "/children");
        return {std::istream_iterator<pid_t>(file), {}};
    }

    PollLoop loop;
    const std::string forking;
    PosixProcessService service;
};

TEST_F(ForkServerTest, ForksOurToolsAndStartsOthers) {
    ASSERT_FALSE(forking.empty());
    EXPECT_EQ(run("/usr/bin/dig", {"a b", ""}).standardOutput, "a b \n");
    EXPECT_TRUE(children().empty());
    for (int i = 0; i < 2; ++i) {
        const ProcessTermination refused = run("/usr/sbin/ipconfig", {"getifaddr", ""});
        EXPECT_EQ(refused.status, 64);
        EXPECT_EQ(refused.standardOutput, "");
        EXPECT_TRUE(refused.standardError.starts_with("usage: ipconfig ")) << refused.standardError;
        EXPECT_EQ(run("/usr/sbin/ipconfig", {"getifaddr", "nowhere"}).status, 1);
        EXPECT_EQ(children().size(), 1U);
    }
}

TEST_F(ForkServerTest, GoesOnWhenTheServerIsKilled) {
    EXPECT_EQ(run("/usr/sbin/ipconfig", {"getifaddr", "nowhere"}).status, 1);
    const auto servers = children();
    ASSERT_EQ(servers.size(), 1U);
    ::kill(servers[0], SIGKILL);
    // One is started by itself, and the next has a new server.
    EXPECT_EQ(run("/usr/sbin/ipconfig", {"getifaddr", "nowhere"}).status, 1);
    EXPECT_EQ(run("/usr/sbin/ipconfig", {"getifaddr", "nowhere"}).status, 1);
    const auto successors = children();
    ASSERT_EQ(successors.size(), 1U);
    EXPECT_NE(successors[0], servers[0]);
}

} // namespace
} // namespace tolvo
