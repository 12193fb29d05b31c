#include "probes/shell_command_runner.h"

#include "core/async/one_shot.h"
#include "core/text.h"

#include <stop_token>
#include <utility>

namespace tolvo {

namespace {

using namespace commandRunnerError;

/// Undecodable output hides the status.
CommandOutcome outcomeOf(CommandRequest request, ProcessTermination termination) {
    if (!isValidUTF8(termination.standardOutput) || !isValidUTF8(termination.standardError))
        return std::unexpected(OutputDecodingFailed{std::move(request.executable)});
    if (termination.status != 0)
        return std::unexpected(NonZeroExit{std::move(request.executable), termination.status,
                                           std::move(termination.standardOutput),
                                           std::move(termination.standardError)});
    return CommandExecutionResult{std::move(request.executable), std::move(request.arguments), 0,
                                  std::move(termination.standardOutput), std::move(termination.standardError)};
}

/// One run from its launch on: whatever settles the outcome first.
class Execution {
public:
    Execution(const CommandRequest& request, OneShot<CommandOutcome> outcome, RunningProcess& process)
        : request_(request), outcome_(std::move(outcome)), process_(process) {}

    void timeOut() { end(TimedOut{request_.executable, request_.timeout}); }
    void cancel() { end(Cancelled{request_.executable}); }

    /// A program that has ended is only waiting for the loop to tell of it: a main thread that came late, such as
    /// after a stop of the whole program, must not make a time-out of that.
    void timeOutIfRunning() {
        if (process_.isRunning())
            timeOut();
    }

private:
    void end(CommandRunnerError error) {
        process_.terminate();
        outcome_.set(std::unexpected(std::move(error)));
    }

    const CommandRequest& request_;
    OneShot<CommandOutcome> outcome_;
    RunningProcess& process_;
};

} // namespace

ShellCommandRunner::ShellCommandRunner(ProcessService& processService, std::set<std::string> allowedExecutables)
    : processService_(processService), allowedExecutables_(std::move(allowedExecutables)) {}

Task<CommandOutcome> ShellCommandRunner::run(CommandRequest request) {
    if (!allowedExecutables_.contains(request.executable))
        co_return std::unexpected(ExecutableNotAllowed{request.executable});
    const TaskContext context = co_await currentContext();
    if (context.stopToken.stop_requested())
        co_return std::unexpected(Cancelled{request.executable});

    const OneShot<CommandOutcome> outcome;
    auto launched = processService_.launch(request.executable, request.arguments,
                                           [outcome, request](ProcessTermination termination) {
                                               outcome.set(outcomeOf(request, std::move(termination)));
                                           });
    if (!launched)
        co_return std::unexpected(LaunchFailed{std::move(launched.error().description)});

    Execution execution(request, outcome, **launched);
    const std::stop_callback onCancellation(context.stopToken, [&execution] { execution.cancel(); });
    LoopRegistration timer;
    // Less than a nanosecond, or no number at all, is no time.
    if (request.timeout >= 1e-9)
        timer = context.loop->after(Seconds(request.timeout), [&execution] { execution.timeOutIfRunning(); });
    else
        execution.timeOut();
    co_return co_await outcome.take(OnCancellation::KeepWaiting);
}

} // namespace tolvo
