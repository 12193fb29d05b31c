#pragma once

#include "platform/linux/unique_descriptor.h"

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// A program that is started once, with the argument "serve", and forks itself for each command that it is asked for.
/// A start costs a fifth of a new program's that way, most of which is the C library looking at the processor. The
/// forks are children of this process, and end and are reaped like any other. Main thread.
class ForkServer {
public:
    /// A program with a symbolic link for the name of each of its commands.
    ForkServer(std::string program, std::vector<std::string> environment);
    ForkServer(const ForkServer&) = delete;
    ForkServer& operator=(const ForkServer&) = delete;
    ~ForkServer();

    /// Starts the command, whose path comes first, with these outputs. Nothing for a path that is none of the
    /// program's commands, and when the server fails: then the program is to be started the ordinary way.
    std::optional<pid_t> fork(const std::vector<std::string>& arguments, int standardOutput, int standardError);

private:
    bool serves(const std::string& path);
    bool isRunning();
    std::optional<pid_t> ask(const std::string& request, int standardOutput, int standardError) const;
    void stop();

    const std::string program_;
    const std::vector<std::string> environment_;
    /// Paths that were asked for, and whether they lead to the program.
    std::map<std::string, bool> served_;
    UniqueDescriptor socket_;
    pid_t server_ = -1;
};

} // namespace tolvo
