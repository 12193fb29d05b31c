#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tolvo {

/// How a program ended, and what it had written by then.
struct ProcessTermination {
    /// Its exit status; 128 and the signal's number if a signal ended it.
    std::int32_t status = 0;
    std::string standardOutput;
    std::string standardError;
};

struct ProcessLaunchError {
    /// The system's words.
    std::string description;
};

/// A program that was started. Dropping it while the program runs asks the program to end; nobody hears of it then.
class RunningProcess {
public:
    RunningProcess(const RunningProcess&) = delete;
    RunningProcess& operator=(const RunningProcess&) = delete;
    virtual ~RunningProcess() = default;

    /// False from the program's end on, also before its end has been told.
    virtual bool isRunning() const = 0;
    /// Asks the program to end, if it runs and wasn't asked before. It may decline.
    virtual void terminate() = 0;

protected:
    RunningProcess() = default;
};

/// Starts programs, without a shell. They inherit standard input, working directory and environment, the latter in the
/// C locale. Main thread only.
class ProcessService {
public:
    using TerminationHandler = std::move_only_function<void(ProcessTermination)>;

    ProcessService(const ProcessService&) = delete;
    ProcessService& operator=(const ProcessService&) = delete;
    virtual ~ProcessService() = default;

    /// The handler is called once, from the loop, when the program has ended; never when the process was dropped
    /// before. What the program writes waits in its two pipes until then: one that writes more than a pipe holds
    /// doesn't end by itself. The arguments come without the program's name.
    virtual std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
    launch(const std::string& executable, const std::vector<std::string>& arguments,
           TerminationHandler onTermination) = 0;

protected:
    ProcessService() = default;
};

} // namespace tolvo
