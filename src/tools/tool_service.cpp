#include "tools/tool.h"

#include "core/async/one_shot.h"
#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_process_service.h"
#include "platform/linux/tool_messages.h"
#include "platform/linux/unique_descriptor.h"
#include "tools/arrival_stamp.h"
#include "tools/text_output.h"

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

namespace tolvo::tools {

namespace {

using namespace toolMessage;

using CommandLine = std::vector<std::string>;

constexpr int statusOfCancelled = 128 + SIGTERM;

/// Like a program that is started, but without the start. It ends with this process.
std::expected<pid_t, int> startFork(const CommandLine& commandLine, const CommandLine&, std::span<const int> outputs) {
    const pid_t server = ::getpid();
    const pid_t child = ::fork();
    if (child < 0)
        return std::unexpected(errno);
    if (child > 0)
        return child;
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() != server)
        std::_Exit(statusOfCancelled);
    ::dup2(outputs[0], STDOUT_FILENO);
    ::dup2(outputs[1], STDERR_FILENO);
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
    std::_Exit(runProgram(std::vector<std::string_view>(commandLine.begin(), commandLine.end())));
}

CommandLine argumentsIn(std::string_view text) {
    CommandLine arguments;
    while (!text.empty()) {
        arguments.emplace_back(text.substr(0, text.find('\0')));
        text.remove_prefix(arguments.back().size() + 1);
    }
    return arguments;
}

/// The kernel begins to stamp a moment after the first socket asks for it, and what arrives before counts as come when
/// it is read. While this socket is open, it goes on.
UniqueDescriptor keepStamping() {
    UniqueDescriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    stampArrivals(socket.get());
    return socket;
}

class ToolService {
public:
    /// Until the application is gone.
    void run() { loop_.run(); }

private:
    void takeRequest() {
        const ssize_t size = ::recv(descriptor, buffer_.data(), buffer_.size(), MSG_DONTWAIT);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (size <= 0)
            return loop_.quit();
        take({buffer_.data(), static_cast<std::size_t>(size)});
    }

    void take(std::string_view message) {
        RequestHeader header;
        if (message.size() < sizeof header)
            return;
        std::memcpy(&header, message.data(), sizeof header);
        message.remove_prefix(sizeof header);
        if (header.kind == RequestKind::Run && message.ends_with('\0'))
            runs_.insert_or_assign(header.run, tasks_.start(run(header.run, argumentsIn(message))));
        else if (const auto found = runs_.find(header.run); found != runs_.end())
            found->second.cancel();
    }

    Task<void> run(std::uint32_t number, CommandLine commandLine) {
        ToolResult result;
        try {
            result = co_await resultOf(commandLine);
        } catch (const CancellationError&) {
            // The application wants to hear of the end all the same.
            result.status = statusOfCancelled;
        }
        runs_.erase(number);
        tell(number, result);
    }

    Task<ToolResult> resultOf(const CommandLine& commandLine) {
        const std::vector<std::string_view> arguments(commandLine.begin(), commandLine.end());
        if (auto answered = answer(arguments))
            co_return co_await std::move(*answered);
        co_return co_await runInFork(commandLine);
    }

    Task<ToolResult> runInFork(const CommandLine& commandLine) {
        const OneShot<ToolResult> result;
        const auto process = processes_.launch(
            commandLine.front(), {commandLine.begin() + 1, commandLine.end()}, [result](ProcessTermination end) {
                result.set({end.status, std::move(end.standardOutput), std::move(end.standardError)});
            });
        if (!process)
            co_return failed(process.error().description, exitStatus::System);
        co_return co_await result.take();
    }

    /// In pieces that the socket takes.
    void tell(std::uint32_t number, const ToolResult& result) {
        std::string_view output = result.output;
        std::string_view errors = result.errors;
        bool isLast = false;
        while (!isLast) {
            const std::string_view outputPiece = output.substr(0, longestMessage);
            const std::string_view errorPiece = errors.substr(0, longestMessage - outputPiece.size());
            output.remove_prefix(outputPiece.size());
            errors.remove_prefix(errorPiece.size());
            isLast = output.empty() && errors.empty();
            const AnswerHeader header{number, result.status, static_cast<std::uint32_t>(outputPiece.size()), isLast};
            if (!send(header, outputPiece, errorPiece))
                return loop_.quit();
        }
    }

    static bool send(AnswerHeader header, std::string_view output, std::string_view errors) {
        std::array<iovec, 3> parts{iovec{&header, sizeof header},
                                   {const_cast<char*>(output.data()), output.size()},
                                   {const_cast<char*>(errors.data()), errors.size()}};
        msghdr message{};
        message.msg_iov = parts.data();
        message.msg_iovlen = parts.size();
        ssize_t size = -1;
        do
            size = ::sendmsg(descriptor, &message, MSG_NOSIGNAL);
        while (size < 0 && errno == EINTR);
        return size >= 0;
    }

    const UniqueDescriptor stamping_ = keepStamping();
    PollLoop loop_;
    PosixProcessService processes_{loop_, {}, startFork};
    std::array<char, longestMessage> buffer_;
    std::map<std::uint32_t, TaskHandle> runs_;
    LoopRegistration requests_ = loop_.watch(descriptor, DescriptorEvent::Readable, [this] { takeRequest(); });
    TaskScope tasks_{loop_};
};

} // namespace

int serveTools() {
    ToolService().run();
    return exitStatus::Success;
}

} // namespace tolvo::tools
