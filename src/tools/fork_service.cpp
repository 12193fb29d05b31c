#include "tools/tool.h"

#include "platform/linux/unique_descriptor.h"

#include <sched.h>
#include <sys/socket.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <vector>

namespace tolvo::tools {

namespace {

constexpr int serviceSocket = STDERR_FILENO + 1;

struct Request {
    /// Arguments, each with its final NUL.
    std::string_view text;
    std::array<UniqueDescriptor, 2> outputs;
};

std::array<UniqueDescriptor, 2> outputsOf(msghdr& message) {
    std::array<int, 2> descriptors{-1, -1};
    const cmsghdr* const header = CMSG_FIRSTHDR(&message);
    if (header != nullptr && header->cmsg_type == SCM_RIGHTS && header->cmsg_len == CMSG_LEN(sizeof descriptors))
        std::memcpy(descriptors.data(), CMSG_DATA(header), sizeof descriptors);
    return {UniqueDescriptor(descriptors[0]), UniqueDescriptor(descriptors[1])};
}

/// Nothing when the application is gone.
std::optional<Request> receive(std::span<char> buffer) {
    iovec part{buffer.data(), buffer.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(2 * sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    ssize_t size = -1;
    do
        size = ::recvmsg(serviceSocket, &message, MSG_CMSG_CLOEXEC);
    while (size < 0 && errno == EINTR);
    if (size <= 0 || (message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0)
        return std::nullopt;
    Request request{{buffer.data(), static_cast<std::size_t>(size)}, outputsOf(message)};
    return request.outputs[1] && request.text.ends_with('\0') ? std::optional(std::move(request)) : std::nullopt;
}

std::vector<std::string_view> argumentsIn(std::string_view text) {
    std::vector<std::string_view> arguments;
    while (!text.empty()) {
        arguments.push_back(text.substr(0, text.find('\0')));
        text.remove_prefix(arguments.back().size() + 1);
    }
    return arguments;
}

[[noreturn]] void runInChild(const Request& request) {
    ::dup2(request.outputs[0].get(), STDOUT_FILENO);
    ::dup2(request.outputs[1].get(), STDERR_FILENO);
    ::close_range(serviceSocket, ~0U, 0);
    std::_Exit(runProgram(argumentsIn(request.text)));
}

/// A fork whose parent is the application, which can wait for it then. The C library has no call for that; nothing of
/// its own needs to be told, with one thread.
long forkForParent() {
    return ::syscall(SYS_clone, CLONE_PARENT | SIGCHLD, nullptr, nullptr, nullptr, nullptr);
}

} // namespace

int serveForks() {
    std::vector<char> buffer(65536);
    while (const auto request = receive(buffer)) {
        const auto child = static_cast<pid_t>(forkForParent());
        if (child == 0)
            runInChild(*request);
        if (::send(serviceSocket, &child, sizeof child, MSG_NOSIGNAL) < 0)
            break;
    }
    return exitStatus::Success;
}

} // namespace tolvo::tools
