#include "platform/linux/tool_server_process_service.h"

#include "platform/linux/c_locale_environment.h"
#include "platform/linux/spawn_program.h"
#include "platform/linux/spawned_child.h"
#include "platform/linux/tool_messages.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tolvo {

using namespace toolMessage;

namespace {

/// A run that was cancelled ends within a millisecond, unless the server is stuck.
constexpr Seconds patience(1);

constexpr int statusOfKilled = 128 + SIGKILL;

std::string asMessage(RequestHeader header) {
    std::string message(sizeof header, '\0');
    std::memcpy(message.data(), &header, sizeof header);
    return message;
}

bool send(int socket, const std::string& message) {
    return ::send(socket, message.data(), message.size(), MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(message.size());
}

bool leadsTo(const std::string& path, const std::string& program) {
    std::error_code error;
    return std::filesystem::equivalent(path, program, error);
}

} // namespace

struct ToolServerProcessService::Run {
    std::uint32_t number = 0;
    std::string executable;
    std::vector<std::string> arguments;
    TerminationHandler onTermination;
    ProcessTermination termination;
    bool hasEnded = false;
    bool wasAskedToEnd = false;
    LoopRegistration patience;
    /// In place of the server's.
    std::unique_ptr<RunningProcess> process;
};

class ToolServerProcessService::Handle final : public RunningProcess {
public:
    Handle(ToolServerProcessService& service, std::shared_ptr<Run> run) : service_(service), run_(std::move(run)) {}
    ~Handle() override {
        run_->onTermination = nullptr;
        run_->process.reset();
        service_.cancel(*run_);
    }

    bool isRunning() const override {
        if (run_->process)
            return run_->process->isRunning();
        if (!run_->hasEnded)
            service_.receive();
        return !run_->hasEnded;
    }

    void terminate() override {
        if (run_->process)
            run_->process->terminate();
        service_.cancel(*run_);
    }

private:
    ToolServerProcessService& service_;
    std::shared_ptr<Run> run_;
};

ToolServerProcessService::ToolServerProcessService(MainLoop& loop, ProcessService& ordinary,
                                                   const ProgramPaths& programPaths, std::string program)
    : loop_(loop), ordinary_(ordinary), program_(std::move(program)), environment_(environmentInCLocale()) {
    // One of the paths may lead elsewhere by the user's wish.
    for (const auto& [known, path] : programPaths) {
        if (!program_.empty() && leadsTo(path, program_))
            served_.emplace(known, path);
    }
}

// Without its socket the server ends by itself, and asks what it started to do so.
ToolServerProcessService::~ToolServerProcessService() = default;

std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
ToolServerProcessService::launch(const std::string& executable, const std::vector<std::string>& arguments,
                                 TerminationHandler onTermination) {
    reapServers();
    const auto path = served_.find(executable);
    const std::uint32_t number = ++lastRun_;
    if (path == served_.end() || !isServerRunning() || !ask(number, path->second, arguments))
        return ordinary_.launch(executable, arguments, std::move(onTermination));
    auto run = std::make_shared<Run>();
    run->number = number;
    run->executable = executable;
    run->arguments = arguments;
    run->onTermination = std::move(onTermination);
    runs_.emplace(number, run);
    return std::make_unique<Handle>(*this, std::move(run));
}

bool ToolServerProcessService::isServerRunning() {
    if (socket_)
        return true;
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return false;
    UniqueDescriptor ours(ends[0]);
    const UniqueDescriptor theirs(ends[1]);
    static_assert(descriptor == STDERR_FILENO + 1);
    const auto server =
        spawnProgram({program_, "serve"}, environment_, std::array{STDOUT_FILENO, STDERR_FILENO, theirs.get()});
    if (!server)
        return false;
    server_ = *server;
    socket_ = std::move(ours);
    answers_ = loop_.watch(socket_.get(), DescriptorEvent::Readable, [this] {
        receive();
        tellEnds();
    });
    return true;
}

bool ToolServerProcessService::ask(std::uint32_t number, const std::string& path,
                                   const std::vector<std::string>& arguments) {
    std::string message = asMessage({number, RequestKind::Run});
    message.append(path).push_back('\0');
    for (const std::string& argument : arguments) {
        // It would arrive as two.
        if (argument.contains('\0'))
            return false;
        message.append(argument).push_back('\0');
    }
    return message.size() <= longestMessage && send(socket_.get(), message);
}

void ToolServerProcessService::cancel(Run& run) {
    if (!runs_.contains(run.number) || std::exchange(run.wasAskedToEnd, true))
        return;
    send(socket_.get(), asMessage({run.number, RequestKind::Cancel}));
    run.patience = loop_.after(patience, [this, number = run.number] {
        // The answer may be there, and only this thread late.
        receive();
        if (runs_.contains(number))
            giveServerUp();
    });
}

void ToolServerProcessService::receive() {
    static_assert(sizeof(AnswerHeader) + longestMessage < 65536);
    std::array<char, 65536> buffer;
    while (socket_) {
        const ssize_t size = ::recv(socket_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (size > 0)
            take({buffer.data(), static_cast<std::size_t>(size)});
        else if (size < 0 && errno == EAGAIN)
            return;
        else if (size == 0 || errno != EINTR)
            giveServerUp();
    }
}

void ToolServerProcessService::take(std::string_view message) {
    AnswerHeader header;
    if (message.size() < sizeof header)
        return;
    std::memcpy(&header, message.data(), sizeof header);
    message.remove_prefix(sizeof header);
    const auto found = runs_.find(header.run);
    if (found == runs_.end() || header.outputSize > message.size())
        return;
    ProcessTermination& termination = found->second->termination;
    termination.standardOutput += message.substr(0, header.outputSize);
    termination.standardError += message.substr(header.outputSize);
    if (header.isLast == 0)
        return;
    termination.status = header.status;
    found->second->hasEnded = true;
    found->second->patience.reset();
    ended_.push_back(std::move(found->second));
    runs_.erase(found);
    telling_ = loop_.after(Seconds(0), [this] { tellEnds(); });
}

void ToolServerProcessService::tellEnds() {
    telling_.reset();
    for (const auto& run : std::exchange(ended_, {})) {
        if (auto onTermination = std::exchange(run->onTermination, nullptr))
            onTermination(std::move(run->termination));
    }
}

void ToolServerProcessService::giveServerUp() {
    answers_.reset();
    socket_.reset();
    ::kill(server_, SIGKILL);
    givenUp_.push_back(server_);
    for (const auto& [number, run] : std::exchange(runs_, {}))
        runOrdinarily(run);
}

void ToolServerProcessService::reapServers() {
    std::erase_if(givenUp_, [](pid_t server) { return exitStatus(server, Reaping::Reap).has_value(); });
}

void ToolServerProcessService::runOrdinarily(const std::shared_ptr<Run>& run) {
    run->patience.reset();
    run->termination = {statusOfKilled, {}, {}};
    if (!run->wasAskedToEnd) {
        auto process = ordinary_.launch(run->executable, run->arguments, [run = std::weak_ptr(run)](auto termination) {
            const auto told = run.lock();
            if (auto onTermination = told ? std::exchange(told->onTermination, nullptr) : nullptr)
                onTermination(std::move(termination));
        });
        if (process) {
            run->process = std::move(*process);
            return;
        }
    }
    run->hasEnded = true;
    ended_.push_back(run);
    telling_ = loop_.after(Seconds(0), [this] { tellEnds(); });
}

} // namespace tolvo
