#include "tests/tools/sandbox.h"

#include "platform/linux/unique_descriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sched.h>
#include <spawn.h>
#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <fstream>
#include <iterator>
#include <sstream>

namespace tolvo::test {

namespace {

std::string readAll(int descriptor) {
    std::string text;
    std::array<char, 65536> buffer{};
    while (true) {
        const ssize_t size = ::read(descriptor, buffer.data(), buffer.size());
        if (size <= 0)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }
}

using Pipe = std::array<UniqueDescriptor, 2>;

Pipe makePipe(int size) {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ::fcntl(ends[1], F_SETPIPE_SZ, size);
    return {UniqueDescriptor(ends[0]), UniqueDescriptor(ends[1])};
}

double milliseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

} // namespace

std::optional<std::string> enterSandbox() {
    static const std::optional<std::string> problem = []() -> std::optional<std::string> {
        if (::unshare(CLONE_NEWNET | CLONE_NEWNS) != 0)
            return "needs root, for network and mount namespaces of its own";
        const ToolRun result = run({"sh", "-ec",
                                    "mount --make-rprivate /; ip link set lo up; file=$(mktemp);"
                                    "mount --bind $file /etc/resolv.conf; rm $file"});
        return result.status == 0 ? std::nullopt : std::optional("cannot furnish the namespaces: " + result.errors);
    }();
    return problem;
}

void setResolverConfiguration(const std::string& text) {
    std::ofstream("/etc/resolv.conf", std::ios::trunc) << text;
}

ToolRun run(std::vector<std::string> commandLine, Output output) {
    Pipe out = makePipe(1 << 20);
    Pipe errors = makePipe(65536);
    const UniqueDescriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, output == Output::Discarded ? nowhere.get() : out[1].get(),
                                       STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, errors[1].get(), STDERR_FILENO);
    std::vector<char*> arguments;
    for (std::string& argument : commandLine)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    ToolRun result;
    pid_t child = 0;
    const auto start = std::chrono::steady_clock::now();
    if (::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) != 0)
        return result;
    rusage usage{};
    int status = 0;
    ::wait4(child, &status, 0, &usage);
    result.wallMilliseconds =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    result.cpuMilliseconds = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    ::posix_spawn_file_actions_destroy(&actions);
    out[1].reset();
    errors[1].reset();
    result.output = readAll(out[0].get());
    result.errors = readAll(errors[0].get());
    return result;
}

ToolRun runTool(const std::string& words, Output output) {
    std::istringstream stream(words);
    std::vector<std::string> commandLine(std::istream_iterator<std::string>(stream), {});
    for (std::string& word : commandLine)
        word = word == "EMPTY" ? "" : word;
    commandLine.at(0) = toolPath(commandLine.at(0));
    return run(commandLine, output);
}

std::string toolPath(const std::string& name) {
    return std::string(TOLVO_TOOL_FOLDER) + '/' + name;
}

} // namespace tolvo::test
