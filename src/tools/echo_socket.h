#pragma once

#include "platform/linux/unique_descriptor.h"

#include <netinet/in.h>

#include <chrono>
#include <cstdint>
#include <expected>
#include <optional>
#include <string>

namespace tolvo::tools {

/// An address that is written out: dotted, or with colons and perhaps a zone. A name isn't one.
struct EchoTarget {
    sockaddr_in6 storage{};
    socklen_t size = 0;

    static std::optional<EchoTarget> parse(const std::string& host);

    int family() const { return storage.sin6_family; }
    const sockaddr* address() const { return reinterpret_cast<const sockaddr*>(&storage); }
};

struct EchoReply {
    std::uint16_t sequence = 0;
    /// As in StampedDatagram.
    std::chrono::nanoseconds arrival{};
};

/// ICMP echoes without privilege: the kernel hands such a socket the replies to its own requests and nothing else.
class EchoSocket {
public:
    /// Nothing where the system keeps these sockets from the user (net.ipv4.ping_group_range), or knows no way there.
    static std::optional<EchoSocket> connectTo(const EchoTarget& target);

    int descriptor() const { return socket_.get(); }
    /// 56 bytes of data. False when it couldn't leave this machine.
    bool send(std::uint16_t sequence) const;
    /// A reply, or an errno value: EAGAIN when none is there, else what the network said of a request.
    std::expected<EchoReply, int> receive() const;

private:
    EchoSocket(UniqueDescriptor socket, int family) : socket_(std::move(socket)), family_(family) {}

    UniqueDescriptor socket_;
    int family_;
};

} // namespace tolvo::tools
