#pragma once

#include "core/async/task.h"

#include <cstdint>
#include <expected>
#include <string>
#include <variant>
#include <vector>

namespace tolvo {

struct CommandRequest {
    /// Absolute path of the tool.
    std::string executable;
    /// Without the program's name.
    std::vector<std::string> arguments;
    /// Seconds that the program may run; 0 or less ends it right after its start.
    double timeout = 0;

    bool operator==(const CommandRequest&) const = default;
};

struct CommandExecutionResult {
    std::string executable;
    std::vector<std::string> arguments;
    /// Always 0 here, since any other status is an error.
    std::int32_t exitCode = 0;
    std::string standardOutput;
    std::string standardError;

    bool operator==(const CommandExecutionResult&) const = default;
};

/// How a run can fail. No case reaches the user as such, so none has a message.
namespace commandRunnerError {

struct ExecutableNotAllowed {
    std::string path;
    bool operator==(const ExecutableNotAllowed&) const = default;
};
struct LaunchFailed {
    std::string description;
    bool operator==(const LaunchFailed&) const = default;
};
struct TimedOut {
    std::string executable;
    double timeout = 0;
    bool operator==(const TimedOut&) const = default;
};
struct Cancelled {
    std::string executable;
    bool operator==(const Cancelled&) const = default;
};
struct OutputDecodingFailed {
    std::string executable;
    bool operator==(const OutputDecodingFailed&) const = default;
};
/// Carries the output, because some tools fail and still print what the caller needs.
struct NonZeroExit {
    std::string executable;
    std::int32_t exitCode = 0;
    std::string standardOutput;
    std::string standardError;
    bool operator==(const NonZeroExit&) const = default;
};

} // namespace commandRunnerError

using CommandRunnerError = std::variant<commandRunnerError::ExecutableNotAllowed, commandRunnerError::LaunchFailed,
                                        commandRunnerError::TimedOut, commandRunnerError::Cancelled,
                                        commandRunnerError::OutputDecodingFailed, commandRunnerError::NonZeroExit>;

using CommandOutcome = std::expected<CommandExecutionResult, CommandRunnerError>;

/// Runs one allowed program to its end. No shell is involved; the arguments arrive as given.
class CommandRunning {
public:
    CommandRunning(const CommandRunning&) = delete;
    CommandRunning& operator=(const CommandRunning&) = delete;
    virtual ~CommandRunning() = default;

    /// Succeeds when the program ended with status 0 and printed valid UTF-8. Cancelling the awaiting task gives
    /// Cancelled (a value, not an exception); that, the time-out, or dropping the task ends the program. Runs share
    /// nothing and may go on at the same time. Resumes on the main thread.
    virtual Task<CommandOutcome> run(CommandRequest request) = 0;

protected:
    CommandRunning() = default;
};

} // namespace tolvo
