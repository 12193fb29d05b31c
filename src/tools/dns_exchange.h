#pragma once

#include "core/async/task.h"
#include "tools/dns_message.h"

#include <chrono>
#include <expected>
#include <string>
#include <vector>

#include <netinet/in.h>
#include <resolv.h>

namespace tolvo::tools {

/// A name server's address, IPv4 or IPv6.
struct NameServer {
    sockaddr_in6 storage{};
    socklen_t size = 0;

    const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&storage); }
    /// The address without port, with the zone of a link-local one.
    std::string text() const;
    unsigned port() const;
};

/// The resolver's servers in their order.
std::vector<NameServer> nameServers(const struct __res_state& resolver);

enum class Transport { UDP, TCP };

struct DNSReply {
    DNSMessage message;
    Transport transport = Transport::UDP;
    /// From sending the query to having the whole answer.
    std::chrono::microseconds duration{};
    bool isTruncated = false;
};

/// Asks one server once, on a loop. What isn't the answer is passed over until the time-out. The error is an errno
/// value. The query outlives the task.
Task<std::expected<DNSReply, int>> exchange(NameServer server, Transport transport, const DNSMessage& query,
                                            std::chrono::milliseconds timeout);

} // namespace tolvo::tools
