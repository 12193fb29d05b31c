#pragma once

#include "platform/linux/output_pipe.h"
#include "platform/linux/unique_descriptor.h"

#include <sys/types.h>

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvo {

struct ChildOutputs {
    OutputPipe standardOutput;
    OutputPipe standardError;
};

/// A child process of ours. Its process id is its own until it has been reaped.
struct SpawnedChild {
    pid_t pid = -1;
    /// Readable once the child has ended.
    UniqueDescriptor pidDescriptor;
    ChildOutputs outputs;
};

struct SpawnError {
    /// An errno.
    int code = 0;
    /// A child that did start, but couldn't be watched. It has been killed, and is still to be reaped.
    std::optional<pid_t> unwatchedChild;
};

/// How a child is started: as spawnProgram does it.
using ChildStarter =
    std::function<std::expected<pid_t, int>(const std::vector<std::string>& arguments,
                                            const std::vector<std::string>& environment, std::span<const int> outputs)>;

/// Starts the program that is the first argument, with pipes as its outputs.
std::expected<SpawnedChild, SpawnError> spawnChild(const std::vector<std::string>& arguments,
                                                   const std::vector<std::string>& environment,
                                                   const ChildStarter& start);

enum class Reaping { Keep, Reap };

/// How the child ended, as ProcessTermination counts it, or nothing while it runs. Keep leaves it to be asked again.
std::optional<std::int32_t> exitStatus(pid_t child, Reaping reaping);

} // namespace tolvo
