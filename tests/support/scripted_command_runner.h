#pragma once

#include "core/async/signal.h"
#include "probes/command_running.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tolvo::testing {

/// Answers runs by their command line, which is the executable and the arguments joined by blanks, and keeps what it
/// was asked. A run without a script is refused. As with the real one, a cancelled run ends as Cancelled.
class ScriptedCommandRunner final : public CommandRunning {
public:
    void prints(const std::string& commandLine, std::string standardOutput, std::int32_t exitCode = 0) {
        if (exitCode == 0)
            script_[commandLine] = CommandExecutionResult{"", {}, 0, std::move(standardOutput), ""};
        else
            fails(commandLine, commandRunnerError::NonZeroExit{"", exitCode, std::move(standardOutput), ""});
    }
    void fails(const std::string& commandLine, CommandRunnerError error) {
        script_[commandLine] = std::unexpected(std::move(error));
    }
    /// Runs of it go on until it is released or they are cancelled.
    void hold(const std::string& commandLine) { held_.insert(commandLine); }
    void release(const std::string& commandLine) {
        held_.erase(commandLine);
        released_.notify();
    }

    Task<CommandOutcome> run(CommandRequest request) override {
        requests.push_back(request);
        commandLines.push_back(commandLine(request));
        const std::string line = commandLines.back();
        try {
            while (held_.contains(line))
                co_await released_.wait();
        } catch (const CancellationError&) {
        }
        if ((co_await currentContext()).stopToken.stop_requested())
            co_return std::unexpected<CommandRunnerError>(commandRunnerError::Cancelled{request.executable});
        const CommandOutcome refusal = std::unexpected(commandRunnerError::ExecutableNotAllowed{request.executable});
        co_return script_.contains(line) ? script_.at(line) : refusal;
    }

    std::vector<CommandRequest> requests;
    std::vector<std::string> commandLines;

private:
    static std::string commandLine(const CommandRequest& request) {
        std::string line = request.executable;
        for (const std::string& argument : request.arguments)
            line += " " + argument;
        return line;
    }

    std::map<std::string, CommandOutcome> script_;
    std::set<std::string> held_;
    Signal released_;
};

} // namespace tolvo::testing
