#include "tools/echo_socket.h"

#include "tools/arrival_stamp.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/icmp6.h>
#include <netinet/ip_icmp.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <span>

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
    if (!socket || !stampArrivals(socket.get()) || ::connect(socket.get(), target.address(), target.size) != 0)
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
    const auto received = receiveStamped(socket_.get(), std::as_writable_bytes(std::span(&reply, 1)));
    if (!received)
        return std::unexpected(received.error());
    if (received->size != sizeof reply || reply.type != (family_ == AF_INET6 ? ICMP6_ECHO_REPLY : ICMP_ECHOREPLY))
        return EchoReply{};
    return EchoReply{ntohs(reply.sequence), received->arrival};
}

} // namespace tolvo::tools
