#include "platform/linux/fork_server.h"

#include "platform/linux/spawn_program.h"

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

/// The server answers in a tenth of a millisecond; the main thread waits for it.
constexpr timeval longestWait{.tv_sec = 1, .tv_usec = 0};

/// Each argument with its final NUL.
std::string joined(const std::vector<std::string>& arguments) {
    std::string request;
    for (const std::string& argument : arguments)
        request.append(argument).push_back('\0');
    return request;
}

bool sendWithOutputs(int socket, const std::string& request, std::array<int, 2> outputs) {
    iovec part{const_cast<char*>(request.data()), request.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof outputs)> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof outputs);
    std::memcpy(CMSG_DATA(header), outputs.data(), sizeof outputs);
    return ::sendmsg(socket, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(request.size());
}

} // namespace

ForkServer::ForkServer(std::string program, std::vector<std::string> environment)
    : program_(std::move(program)), environment_(std::move(environment)) {}

ForkServer::~ForkServer() {
    stop();
}

std::optional<pid_t> ForkServer::fork(const std::vector<std::string>& arguments, int standardOutput,
                                      int standardError) {
    if (!serves(arguments.front()) || !isRunning())
        return std::nullopt;
    const auto child = ask(joined(arguments), standardOutput, standardError);
    // The next command gets a new one.
    if (!child)
        stop();
    return child;
}

bool ForkServer::serves(const std::string& path) {
    const auto [position, isNew] = served_.try_emplace(path, false);
    // One of the links may lead elsewhere by the user's wish.
    std::error_code error;
    if (isNew)
        position->second = std::filesystem::equivalent(path, program_, error);
    return position->second;
}

bool ForkServer::isRunning() {
    if (socket_)
        return true;
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return false;
    UniqueDescriptor ours(ends[0]);
    const UniqueDescriptor theirs(ends[1]);
    ::setsockopt(ours.get(), SOL_SOCKET, SO_RCVTIMEO, &longestWait, sizeof longestWait);
    const auto server =
        spawnProgram({program_, "serve"}, environment_, std::array{STDOUT_FILENO, STDERR_FILENO, theirs.get()});
    if (!server)
        return false;
    server_ = *server;
    socket_ = std::move(ours);
    return true;
}

std::optional<pid_t> ForkServer::ask(const std::string& request, int standardOutput, int standardError) const {
    if (!sendWithOutputs(socket_.get(), request, {standardOutput, standardError}))
        return std::nullopt;
    pid_t child = -1;
    ssize_t size = -1;
    do
        size = ::recv(socket_.get(), &child, sizeof child, 0);
    while (size < 0 && errno == EINTR);
    return size == sizeof child && child > 0 ? std::optional(child) : std::nullopt;
}

void ForkServer::stop() {
    socket_.reset();
    if (const pid_t server = std::exchange(server_, -1); server > 0) {
        ::kill(server, SIGKILL);
        ::waitpid(server, nullptr, 0);
    }
}

} // namespace tolvo
