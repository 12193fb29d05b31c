#include "tools/echo_socket.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/icmp6.h>
#include <netinet/ip_icmp.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace tolvo::tools {

namespace {

constexpr std::size_t dataBytes = 56;

/// Both families have the same header for an echo.
struct Echo {
    std::uint8_t type = 0;
    std::uint8_t code = 0;
    // The kernel fills these two in.
    std::uint16_t checksum = 0;
    std::uint16_t identifier = 0;
    std::uint16_t sequence = 0;
    std::array<std::uint8_t, dataBytes> data{};
};

std::chrono::nanoseconds duration(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

/// The kernel's stamp; the present time where it gives none.
std::chrono::nanoseconds arrivalOf(msghdr& message) {
    for (cmsghdr* control = CMSG_FIRSTHDR(&message); control != nullptr; control = CMSG_NXTHDR(&message, control)) {
        if (control->cmsg_level != SOL_SOCKET || control->cmsg_type != SCM_TIMESTAMPNS)
            continue;
        timespec time{};
        std::memcpy(&time, CMSG_DATA(control), sizeof time);
        return duration(time);
    }
    return wallClock();
}

std::optional<EchoTarget> parseIPv4(const std::string& host) {
    EchoTarget target;
    auto& address = reinterpret_cast<sockaddr_in&>(target.storage);
    target.size = sizeof address;
    address.sin_family = AF_INET;
    return ::inet_pton(AF_INET, host.c_str(), &address.sin_addr) == 1 ? std::optional(target) : std::nullopt;
}

} // namespace

std::optional<EchoTarget> EchoTarget::parse(const std::string& host) {
    if (const auto target = parseIPv4(host))
        return target;
    EchoTarget target;
    target.size = sizeof target.storage;
    target.storage.sin6_family = AF_INET6;
    const std::size_t mark = host.find('%');
    if (::inet_pton(AF_INET6, host.substr(0, mark).c_str(), &target.storage.sin6_addr) != 1)
        return std::nullopt;
    if (mark != std::string::npos)
        target.storage.sin6_scope_id = ::if_nametoindex(host.c_str() + mark + 1);
    if (mark != std::string::npos && target.storage.sin6_scope_id == 0)
        return std::nullopt;
    return target;
}

std::optional<EchoSocket> EchoSocket::connectTo(const EchoTarget& target) {
    const int protocol = target.family() == AF_INET6 ? int{IPPROTO_ICMPV6} : int{IPPROTO_ICMP};
    UniqueDescriptor socket(::socket(target.family(), SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, protocol));
    const int on = 1;
    if (!socket || ::setsockopt(socket.get(), SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on) != 0 ||
        ::connect(socket.get(), target.address(), target.size) != 0)
        return std::nullopt;
    return EchoSocket(std::move(socket), target.family());
}

bool EchoSocket::send(std::uint16_t sequence) const {
    Echo request;
    request.type = family_ == AF_INET6 ? ICMP6_ECHO_REQUEST : ICMP_ECHO;
    request.sequence = htons(sequence);
    return ::send(socket_.get(), &request, sizeof request, 0) == static_cast<ssize_t>(sizeof request);
}

std::expected<EchoReply, int> EchoSocket::receive() const {
    Echo reply;
    iovec part{&reply, sizeof reply};
    alignas(cmsghdr) std::array<char, 256> control;
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = ::recvmsg(socket_.get(), &message, 0);
    if (size < 0)
        return std::unexpected(errno);
    if (size != static_cast<ssize_t>(sizeof reply) ||
        reply.type != (family_ == AF_INET6 ? ICMP6_ECHO_REPLY : ICMP_ECHOREPLY))
        return EchoReply{};
    return EchoReply{ntohs(reply.sequence), arrivalOf(message)};
}

std::chrono::nanoseconds wallClock() {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return duration(time);
}

} // namespace tolvo::tools
