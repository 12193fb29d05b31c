#include "core/async/task_scope.h"
#include "platform/linux/atomic_file_writer.h"
#include "platform/linux/poll_loop.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <iterator>

namespace tolvo::testing {
namespace {

namespace fs = std::filesystem;

Task<void> writeAndQuit(PollLoop& loop, fs::path path, std::string bytes, bool& didWrite) {
    AtomicFileWriter writer;
    didWrite = co_await writer.writeAtomically(std::move(path), std::move(bytes));
    loop.quit();
}

class AtomicFileWriterTest : public ::testing::Test {
protected:
    AtomicFileWriterTest() { fs::create_directories(folder); }
    ~AtomicFileWriterTest() override { fs::remove_all(folder); }

    static bool write(const fs::path& path, const std::string& bytes) {
        PollLoop loop;
        TaskScope scope(loop);
        bool didWrite = false;
        scope.start(writeAndQuit(loop, path, bytes, didWrite));
        loop.run();
        return didWrite;
    }
    static std::string contentOf(const fs::path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator(file), {}};
    }
    std::ptrdiff_t fileCount() const { return std::distance(fs::directory_iterator(folder), {}); }

    const fs::path folder = fs::path(::testing::TempDir()) / ("atomic-file-writer-" + std::to_string(getpid()));
    const fs::path path = folder / "report.json";
};

TEST_F(AtomicFileWriterTest, NewReplacedAndThroughALink) {
    EXPECT_TRUE(write(path, "first"));
    fs::create_symlink("report.json", folder / "link");
    EXPECT_TRUE(write(folder / "link", "second"));
    EXPECT_EQ(contentOf(path), "second");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fileCount(), 2) << "nothing is left beside them";
    EXPECT_FALSE(write(folder / "missing" / "report.json", "x"));
}

TEST_F(AtomicFileWriterTest, FullDiskKeepsTheOldFile) {
    ASSERT_TRUE(write(path, "old"));
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{4096, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool didWrite = write(path, std::string(100'000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(didWrite);
    EXPECT_EQ(contentOf(path), "old");
    EXPECT_EQ(fileCount(), 1);
}

} // namespace
} // namespace tolvo::testing
