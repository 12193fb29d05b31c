#include "platform/linux/posix_process_service.h"

#include "platform/linux/c_locale_environment.h"

#include <csignal>
#include <optional>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

/// How long a child that nobody waits for keeps its descriptor. One that declines to end, or hangs in the kernel, must
/// not use the descriptors up while others like it follow.
constexpr Seconds watchOfAbandoned(10);

/// Inherited from whoever started this program, an ignored SIGCHLD would have the kernel drop all exit statuses.
void keepExitStatuses() {
    struct sigaction action{};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        ::signal(SIGCHLD, SIG_DFL);
}

} // namespace

struct PosixProcessService::Child {
    /// Absent once reaped.
    std::optional<pid_t> pid;
    UniqueDescriptor pidDescriptor;
    std::optional<ChildOutputs> outputs;
    TerminationHandler onTermination;
    bool wasAskedToEnd = false;
    LoopRegistration watch;
    LoopRegistration patience;

    bool isRunning() const { return pid && !exitStatus(*pid, Reaping::Keep); }

    void terminate() {
        if (isRunning() && !std::exchange(wasAskedToEnd, true))
            ::kill(*pid, SIGTERM);
    }
};

class PosixProcessService::Handle final : public RunningProcess {
public:
    Handle(PosixProcessService& service, std::shared_ptr<Child> child) : service_(service), child_(std::move(child)) {}
    ~Handle() override { service_.abandon(child_); }

    bool isRunning() const override { return child_->isRunning(); }
    void terminate() override { child_->terminate(); }

private:
    PosixProcessService& service_;
    std::shared_ptr<Child> child_;
};

PosixProcessService::PosixProcessService(MainLoop& loop, ProgramPaths programPaths, ChildStarter start)
    : loop_(loop),
      programPaths_(std::move(programPaths)),
      environment_(environmentInCLocale()),
      start_(std::move(start)) {
    keepExitStatuses();
}

PosixProcessService::~PosixProcessService() {
    for (const auto& child : children_) {
        child->terminate();
        exitStatus(*child->pid, Reaping::Reap);
    }
    reapStrays();
}

std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
PosixProcessService::launch(const std::string& executable, const std::vector<std::string>& arguments,
                            TerminationHandler onTermination) {
    reapStrays();
    const std::string program = programPath(executable);
    std::vector<std::string> allArguments{program};
    allArguments.insert(allArguments.end(), arguments.begin(), arguments.end());
    auto spawned = spawnChild(allArguments, environment_, start_);
    if (!spawned) {
        if (spawned.error().unwatchedChild)
            strays_.push_back(*spawned.error().unwatchedChild);
        return std::unexpected(ProcessLaunchError{std::generic_category().message(spawned.error().code)});
    }
    auto child = std::make_shared<Child>(spawned->pid, std::move(spawned->pidDescriptor), std::move(spawned->outputs),
                                         std::move(onTermination));
    children_.push_back(child);
    child->watch = loop_.watch(child->pidDescriptor.get(), DescriptorEvent::Readable,
                               [this, weak = std::weak_ptr(child)] { tellEnd(weak.lock()); });
    return std::make_unique<Handle>(*this, std::move(child));
}

std::string PosixProcessService::programPath(const std::string& executable) const {
    const auto known = programPaths_.find(executable);
    return known == programPaths_.end() ? executable : known->second;
}

void PosixProcessService::tellEnd(const std::shared_ptr<Child>& child) {
    const auto status = exitStatus(*child->pid, Reaping::Reap);
    if (!status)
        return;
    child->pid.reset();
    std::erase(children_, child);
    child->watch.reset();
    child->patience.reset();
    child->pidDescriptor.reset();
    const auto outputs = std::exchange(child->outputs, std::nullopt);
    reapStrays();
    if (auto onTermination = std::exchange(child->onTermination, nullptr))
        onTermination({*status, outputs->standardOutput.contents(), outputs->standardError.contents()});
}

void PosixProcessService::abandon(const std::shared_ptr<Child>& child) {
    child->onTermination = nullptr;
    if (!child->pid)
        return;
    child->terminate();
    child->outputs.reset();
    child->patience = loop_.after(watchOfAbandoned, [this, weak = std::weak_ptr(child)] { stopWatching(weak.lock()); });
}

void PosixProcessService::stopWatching(const std::shared_ptr<Child>& child) {
    strays_.push_back(*child->pid);
    child->watch.reset();
    std::erase(children_, child);
}

void PosixProcessService::reapStrays() {
    std::erase_if(strays_, [](pid_t pid) { return exitStatus(pid, Reaping::Reap).has_value(); });
}

} // namespace tolvo
