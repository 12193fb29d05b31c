#pragma once

#include <sys/wait.h>

#include <optional>
#include <string>
#include <vector>

namespace tolvo::test {

/// A network and mount namespace of this process's own, entered once: only a loopback, and its own /etc/resolv.conf.
/// Gives why that can't be had, nothing when it could.
std::optional<std::string> enterSandbox();

/// What the sandbox's /etc/resolv.conf says from now on.
void setResolverConfiguration(const std::string& text);

struct ToolRun {
    /// The exit status; 128 and the signal's number when a signal ended it.
    int status = -1;
    std::string output;
    std::string errors;
    /// Processor time in user and kernel mode.
    double cpuMilliseconds = 0;
    double wallMilliseconds = 0;
};

enum class Output { Kept, Discarded };

/// Runs a program to its end and then reads its pipes, as the application does. Without a slash it is searched on PATH.
ToolRun run(std::vector<std::string> commandLine, Output output = Output::Kept);

/// Runs one of our tools by words between blanks; the word EMPTY is an empty argument.
ToolRun runTool(const std::string& words, Output output = Output::Kept);

/// Where the tools stand that were built with this test.
std::string toolPath(const std::string& name);

} // namespace tolvo::test
