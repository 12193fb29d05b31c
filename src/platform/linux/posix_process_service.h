#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/spawn_program.h"
#include "platform/linux/spawned_child.h"
#include "platform/services/process_service.h"

#include <sys/types.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tolvo {

/// Processes by posix_spawn and pidfd: no thread, no handler of SIGCHLD. Each child is reaped, also one that nobody
/// waits for any more. It outlives the processes that it gave.
class PosixProcessService final : public ProcessService {
public:
    /// Where programs really stand that callers know by another path; other paths are taken as they are.
    using ProgramPaths = std::map<std::string, std::string>;

    explicit PosixProcessService(MainLoop& loop, ProgramPaths programPaths = {}, ChildStarter start = spawnProgram);
    /// Asks what still runs to end.
    ~PosixProcessService() override;

    std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
    launch(const std::string& executable, const std::vector<std::string>& arguments,
           TerminationHandler onTermination) override;

private:
    struct Child;
    class Handle;

    std::string programPath(const std::string& executable) const;
    void tellEnd(const std::shared_ptr<Child>& child);
    void abandon(const std::shared_ptr<Child>& child);
    void stopWatching(const std::shared_ptr<Child>& child);
    void reapStrays();

    MainLoop& loop_;
    const ProgramPaths programPaths_;
    const std::vector<std::string> environment_;
    const ChildStarter start_;
    std::vector<std::shared_ptr<Child>> children_;
    /// Children without a descriptor, looked after each time that another one starts or ends.
    std::vector<pid_t> strays_;
};

} // namespace tolvo
