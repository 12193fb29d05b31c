#include "tools/dns_exchange.h"

#include "platform/linux/unique_descriptor.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

namespace tolvo::tools {

namespace {

using Clock = std::chrono::steady_clock;

/// Waits until the socket is ready; 0, or ETIMEDOUT at the deadline, or what poll says.
int waitFor(int socket, short events, Clock::time_point deadline) {
    while (true) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0)
            return ETIMEDOUT;
        pollfd descriptor{socket, events, 0};
        const int ready = ::poll(&descriptor, 1, static_cast<int>(left.count()));
        if (ready > 0)
            return 0;
        if (ready < 0 && errno != EINTR)
            return errno;
    }
}

bool isRetryable(int error) {
    return error == EAGAIN || error == EINTR;
}

/// Sends or receives all the bytes; 0 or an errno value. A closed connection is ECONNRESET.
template<typename Byte, typename Transfer>
int transferAll(int socket, std::span<Byte> bytes, short events, Clock::time_point deadline, Transfer transfer) {
    while (!bytes.empty()) {
        const ssize_t size = transfer(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(size));
            continue;
        }
        if (size == 0)
            return ECONNRESET;
        if (!isRetryable(errno))
            return errno;
        if (const int error = waitFor(socket, events, deadline))
            return error;
    }
    return 0;
}

int connectTo(int socket, const NameServer& server, Clock::time_point deadline) {
    if (::connect(socket, server.address(), server.size) == 0)
        return 0;
    if (errno != EINPROGRESS)
        return errno;
    if (const int error = waitFor(socket, POLLOUT, deadline))
        return error;
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

std::chrono::microseconds since(Clock::time_point start) {
    return std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
}

std::expected<DNSReply, int> receiveDatagram(int socket, const DNSMessage& query, Clock::time_point start,
                                             Clock::time_point deadline) {
    // Not zeroed: of its pages only those that the reply takes are ever touched.
    const auto buffer = std::make_unique_for_overwrite<std::uint8_t[]>(NS_MAXMSG);
    while (true) {
        if (const int error = waitFor(socket, POLLIN, deadline))
            return std::unexpected(error);
        const ssize_t size = ::recv(socket, buffer.get(), NS_MAXMSG, 0);
        if (size < 0 && !isRetryable(errno))
            return std::unexpected(errno);
        if (size < 0)
            continue;
        const auto duration = since(start);
        const std::span<const std::uint8_t> reply(buffer.get(), static_cast<std::size_t>(size));
        const ReplyVerdict verdict = judgeReply(query, reply);
        if (verdict != ReplyVerdict::Foreign)
            return DNSReply{{reply.begin(), reply.end()}, Transport::UDP, duration, verdict == ReplyVerdict::Truncated};
    }
}

std::expected<DNSReply, int> askByDatagram(int socket, const DNSMessage& query, Clock::time_point deadline) {
    const auto start = Clock::now();
    if (::send(socket, query.data(), query.size(), MSG_NOSIGNAL) < 0)
        return std::unexpected(errno);
    return receiveDatagram(socket, query, start, deadline);
}

std::expected<DNSReply, int> askByStream(int socket, const DNSMessage& query, Clock::time_point deadline) {
    DNSMessage framed{static_cast<std::uint8_t>(query.size() >> 8), static_cast<std::uint8_t>(query.size())};
    framed.insert(framed.end(), query.begin(), query.end());
    const auto start = Clock::now();
    if (const int error = transferAll(socket, std::span<const std::uint8_t>(framed), POLLOUT, deadline, ::send))
        return std::unexpected(error);
    std::array<std::uint8_t, 2> length{};
    if (const int error = transferAll(socket, std::span<std::uint8_t>(length), POLLIN, deadline, ::recv))
        return std::unexpected(error);
    DNSMessage reply(::ns_get16(length.data()));
    if (const int error = transferAll(socket, std::span(reply), POLLIN, deadline, ::recv))
        return std::unexpected(error);
    const auto duration = since(start);
    const ReplyVerdict verdict = judgeReply(query, reply);
    if (verdict == ReplyVerdict::Foreign)
        return std::unexpected(EBADMSG);
    return DNSReply{std::move(reply), Transport::TCP, duration, verdict == ReplyVerdict::Truncated};
}

template<typename Address>
NameServer toNameServer(const Address& address) {
    NameServer server;
    std::memcpy(&server.storage, &address, sizeof address);
    server.size = sizeof address;
    return server;
}

const sockaddr_in& asIPv4(const NameServer& server) {
    return reinterpret_cast<const sockaddr_in&>(server.storage);
}

} // namespace

std::string NameServer::text() const {
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    if (storage.sin6_family == AF_INET)
        return ::inet_ntop(AF_INET, &asIPv4(*this).sin_addr, buffer.data(), buffer.size());
    std::string result = ::inet_ntop(AF_INET6, &storage.sin6_addr, buffer.data(), buffer.size());
    std::array<char, IF_NAMESIZE> zone{};
    if (storage.sin6_scope_id != 0 && ::if_indextoname(storage.sin6_scope_id, zone.data()) != nullptr)
        result.append("%").append(zone.data());
    return result;
}

unsigned NameServer::port() const {
    // The port stands at the same place for both families.
    return ntohs(storage.sin6_port);
}

std::vector<NameServer> nameServers(const struct __res_state& resolver) {
    std::vector<NameServer> servers;
    for (std::size_t i = 0; i < static_cast<std::size_t>(resolver.nscount) && i < MAXNS; ++i) {
        if (const sockaddr_in6* address = resolver._u._ext.nsaddrs[i])
            servers.push_back(toNameServer(*address));
        else if (resolver.nsaddr_list[i].sin_family == AF_INET)
            servers.push_back(toNameServer(resolver.nsaddr_list[i]));
    }
    return servers;
}

std::expected<DNSReply, int> exchange(const NameServer& server, Transport transport, const DNSMessage& query,
                                      std::chrono::milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    const int type = (transport == Transport::UDP ? SOCK_DGRAM : SOCK_STREAM) | SOCK_NONBLOCK | SOCK_CLOEXEC;
    const UniqueDescriptor socket(::socket(server.storage.sin6_family, type, 0));
    if (!socket)
        return std::unexpected(errno);
    if (const int error = connectTo(socket.get(), server, deadline))
        return std::unexpected(error);
    return transport == Transport::UDP ? askByDatagram(socket.get(), query, deadline)
                                       : askByStream(socket.get(), query, deadline);
}

} // namespace tolvo::tools
