#include "tools/dns_exchange.h"

#include "core/async/readiness.h"
#include "platform/linux/unique_descriptor.h"
#include "tools/arrival_stamp.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>

namespace tolvo::tools {

namespace {

using Clock = std::chrono::steady_clock;

bool isRetryable(int error) {
    return error == EAGAIN || error == EINTR;
}

/// Sends or receives all the bytes; 0 or an errno value. A closed connection is ECONNRESET.
template<typename Byte, typename Transfer>
Task<int> transferAll(int socket, std::span<Byte> bytes, DescriptorEvent event, Clock::time_point deadline,
                      Transfer transfer) {
    while (!bytes.empty()) {
        const ssize_t size = transfer(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size > 0) {
            bytes = bytes.subspan(static_cast<std::size_t>(size));
            continue;
        }
        if (size == 0)
            co_return ECONNRESET;
        if (!isRetryable(errno))
            co_return errno;
        if (Clock::now() >= deadline)
            co_return ETIMEDOUT;
        co_await readinessOf(socket, event, deadline);
    }
    co_return 0;
}

/// 0 while the connecting goes on, too.
int connectionError(int socket) {
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

Task<int> connectTo(int socket, NameServer server, Clock::time_point deadline) {
    if (::connect(socket, server.address(), server.size) == 0)
        co_return 0;
    if (errno != EINPROGRESS)
        co_return errno;
    co_await readinessOf(socket, DescriptorEvent::Writable, deadline);
    co_return connectionError(socket);
}

Task<std::expected<DNSReply, int>> receiveDatagram(int socket, const DNSMessage& query, Departure departure,
                                                   Clock::time_point deadline) {
    // Not zeroed: of its pages only those that the reply takes are ever touched.
    const auto buffer = std::make_unique_for_overwrite<std::byte[]>(NS_MAXMSG);
    while (true) {
        const auto received = receiveStamped(socket, {buffer.get(), NS_MAXMSG});
        if (!received && !isRetryable(received.error()))
            co_return std::unexpected(received.error());
        // Where there is none yet, it is empty, and that is a foreign one too.
        const std::span reply(reinterpret_cast<const std::uint8_t*>(buffer.get()), received ? received->size : 0);
        const ReplyVerdict verdict = judgeReply(query, reply);
        if (verdict != ReplyVerdict::Foreign)
            co_return DNSReply{{reply.begin(), reply.end()},
                               Transport::UDP,
                               duration_cast<std::chrono::microseconds>(departure.untilArrival(received->arrival)),
                               verdict == ReplyVerdict::Truncated};
        // After each one: a flood of foreign ones must keep neither this run nor the loop's other work from ending.
        if (Clock::now() >= deadline)
            co_return std::unexpected(ETIMEDOUT);
        co_await readinessOf(socket, DescriptorEvent::Readable, deadline);
    }
}

Task<std::expected<DNSReply, int>> askByDatagram(int socket, const DNSMessage& query, Clock::time_point deadline) {
    const Departure departure;
    if (::send(socket, query.data(), query.size(), MSG_NOSIGNAL) < 0)
        co_return std::unexpected(errno);
    co_return co_await receiveDatagram(socket, query, departure, deadline);
}

Task<std::expected<DNSReply, int>> askByStream(int socket, const DNSMessage& query, Clock::time_point deadline) {
    DNSMessage framed{static_cast<std::uint8_t>(query.size() >> 8), static_cast<std::uint8_t>(query.size())};
    framed.insert(framed.end(), query.begin(), query.end());
    const auto start = Clock::now();
    const std::span<const std::uint8_t> question(framed);
    if (const int error = co_await transferAll(socket, question, DescriptorEvent::Writable, deadline, ::send))
        co_return std::unexpected(error);
    std::array<std::uint8_t, 2> length{};
    if (const int error =
            co_await transferAll(socket, std::span<std::uint8_t>(length), DescriptorEvent::Readable, deadline, ::recv))
        co_return std::unexpected(error);
    DNSMessage reply(::ns_get16(length.data()));
    if (const int error = co_await transferAll(socket, std::span(reply), DescriptorEvent::Readable, deadline, ::recv))
        co_return std::unexpected(error);
    const auto duration = duration_cast<std::chrono::microseconds>(Clock::now() - start);
    const ReplyVerdict verdict = judgeReply(query, reply);
    if (verdict == ReplyVerdict::Foreign)
        co_return std::unexpected(EBADMSG);
    co_return DNSReply{std::move(reply), Transport::TCP, duration, verdict == ReplyVerdict::Truncated};
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

Task<std::expected<DNSReply, int>> exchange(NameServer server, Transport transport, const DNSMessage& query,
                                            std::chrono::milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    const int type = (transport == Transport::UDP ? SOCK_DGRAM : SOCK_STREAM) | SOCK_NONBLOCK | SOCK_CLOEXEC;
    const UniqueDescriptor socket(::socket(server.storage.sin6_family, type, 0));
    if (!socket)
        co_return std::unexpected(errno);
    if (const int error = co_await connectTo(socket.get(), server, deadline))
        co_return std::unexpected(error);
    if (transport == Transport::TCP)
        co_return co_await askByStream(socket.get(), query, deadline);
    stampArrivals(socket.get());
    co_return co_await askByDatagram(socket.get(), query, deadline);
}

} // namespace tolvo::tools
