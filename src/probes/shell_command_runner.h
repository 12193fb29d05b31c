#pragma once

#include "platform/services/process_service.h"
#include "probes/command_running.h"

#include <set>
#include <string>

namespace tolvo {

/// Runs programs from a fixed list of absolute paths, compared by exact text. What happens first decides a run's
/// outcome: the program's end, the time-out or the cancellation. All of it happens on the main thread, hence no lock.
/// A program that has to end is asked to (SIGTERM) and not waited for.
class ShellCommandRunner final : public CommandRunning {
public:
    ShellCommandRunner(ProcessService& processService, std::set<std::string> allowedExecutables);

    Task<CommandOutcome> run(CommandRequest request) override;

private:
    ProcessService& processService_;
    const std::set<std::string> allowedExecutables_;
};

} // namespace tolvo
