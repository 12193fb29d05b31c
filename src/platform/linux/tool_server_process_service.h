#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/services/process_service.h"

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// Has the tools run by one program that stays, started with the argument "serve" when the first tool is wanted: it
/// answers most within itself, at a tenth of what a process costs. To its callers each run is a program like any other;
/// one that can't be asked of the server, or that the server leaves behind when it dies, is started by itself. A server
/// that doesn't end a run soon after it was asked to is given up, and the next run has a new one. Main thread; it never
/// waits for the server.
class ToolServerProcessService final : public ProcessService {
public:
    /// By the path that callers use, where a program really stands.
    using ProgramPaths = std::map<std::string, std::string>;

    /// `program` is what those of the paths lead to that it serves; empty for none. `ordinary` starts all others, by
    /// the callers' paths.
    ToolServerProcessService(MainLoop& loop, ProcessService& ordinary, const ProgramPaths& programPaths,
                             std::string program);
    ~ToolServerProcessService() override;

    std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
    launch(const std::string& executable, const std::vector<std::string>& arguments,
           TerminationHandler onTermination) override;

private:
    struct Run;
    class Handle;
    using Runs = std::map<std::uint32_t, std::shared_ptr<Run>>;

    bool isServerRunning();
    bool ask(std::uint32_t number, const std::string& path, const std::vector<std::string>& arguments);
    void cancel(Run& run);
    void receive();
    void take(std::string_view message);
    void tellEnds();
    void giveServerUp();
    void reapServers();
    void runOrdinarily(const std::shared_ptr<Run>& run);

    MainLoop& loop_;
    ProcessService& ordinary_;
    const std::string program_;
    const std::vector<std::string> environment_;
    /// By the callers' path, the one that the server knows.
    ProgramPaths served_;
    UniqueDescriptor socket_;
    pid_t server_ = -1;
    /// Killed, and looked after at each launch: a server that hangs in the kernel ends when it pleases.
    std::vector<pid_t> givenUp_;
    std::uint32_t lastRun_ = 0;
    /// Those that the server has.
    Runs runs_;
    /// Ended, and still to be told.
    std::vector<std::shared_ptr<Run>> ended_;
    LoopRegistration answers_;
    LoopRegistration telling_;
};

} // namespace tolvo
