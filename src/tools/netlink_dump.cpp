#include "tools/netlink_dump.h"

#include "platform/linux/unique_descriptor.h"

#include <sys/socket.h>

#include <memory>
#include <optional>

namespace tolvo::tools {

namespace {

constexpr std::uint32_t sequence = 1;
/// The kernel fills datagrams of up to 32 KiB if the reader offers that much: the most messages a system call.
constexpr std::size_t datagramSize = 32768;

bool sendRequest(int socket, std::uint16_t type, Bytes request) {
    std::vector<std::byte> message(NLMSG_SPACE(request.size()));
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(NLMSG_LENGTH(request.size()));
    header.nlmsg_type = type;
    header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    header.nlmsg_seq = sequence;
    std::memcpy(message.data(), &header, sizeof header);
    std::memcpy(message.data() + NLMSG_HDRLEN, request.data(), request.size());
    return ::send(socket, message.data(), message.size(), 0) == static_cast<ssize_t>(message.size());
}

/// The error number that NLMSG_ERROR and NLMSG_DONE carry, negated as the kernel sends it; 0 is none.
int carriedError(Bytes payload) {
    return -valueAt<int>(payload).value_or(0);
}

/// What the messages so far say about the dump's end.
struct DumpState {
    bool isDone = false;
    bool wasInterrupted = false;
    int error = 0;
};

void take(const NetlinkMessage& message, DumpState& state, const std::function<void(const NetlinkMessage&)>& visit) {
    if (message.sequence != sequence || state.isDone)
        return;
    state.wasInterrupted |= (message.flags & NLM_F_DUMP_INTR) != 0;
    if (message.type == NLMSG_DONE || message.type == NLMSG_ERROR) {
        state.isDone = true;
        state.error = carriedError(message.payload);
    } else if (message.type >= NLMSG_MIN_TYPE) {
        visit(message);
    }
}

} // namespace

std::expected<void, int> dumpOnce(int protocol, std::uint16_t type, Bytes request,
                                  const std::function<void(const NetlinkMessage&)>& visit) {
    const UniqueDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, protocol));
    if (!socket || !sendRequest(socket.get(), type, request))
        return std::unexpected(errno);
    const auto buffer = std::make_unique_for_overwrite<std::byte[]>(datagramSize);
    DumpState state;
    while (!state.isDone) {
        const ssize_t size = ::recv(socket.get(), buffer.get(), datagramSize, MSG_TRUNC);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return std::unexpected(errno);
        const auto received = static_cast<std::size_t>(size);
        if (received == 0 || received > datagramSize ||
            !visitMessages(Bytes(buffer.get(), received),
                           [&](const NetlinkMessage& message) { take(message, state, visit); }))
            return std::unexpected(EBADMSG);
    }
    if (state.error != 0)
        return std::unexpected(state.error);
    if (state.wasInterrupted)
        return std::unexpected(EINTR);
    return {};
}

} // namespace tolvo::tools
