#pragma once

#include "platform/linux/unique_descriptor.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include <atomic>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <thread>

namespace tolvo::testing {

/// One accepted connection, as a script sees it. Every operation ends soon after the other side has closed.
struct Peer {
    std::string receiveHead() const {
        std::string head;
        char byte = 0;
        while (!head.ends_with("\r\n\r\n") && ::recv(descriptor.get(), &byte, 1, 0) == 1)
            head += byte;
        return head;
    }
    bool receive(std::size_t count) const {
        return ::recv(descriptor.get(), nullptr, count, MSG_WAITALL | MSG_TRUNC) == static_cast<ssize_t>(count);
    }
    bool send(std::string_view bytes) const {
        return ::send(descriptor.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    }
    /// Lets time pass without reading.
    void pause(int milliseconds) const {
        pollfd entry{descriptor.get(), 0, 0};
        ::poll(&entry, 1, milliseconds);
    }
    /// Drops what arrives, until none has for that long (false) or the other side closed (true).
    bool waitForClose(int milliseconds = -1) const {
        pollfd entry{descriptor.get(), POLLIN, 0};
        while (::poll(&entry, 1, milliseconds) > 0) {
            if (::recv(descriptor.get(), nullptr, 1 << 20, MSG_TRUNC) <= 0)
                return true;
        }
        return false;
    }

    UniqueDescriptor descriptor;
};

/// A TCP server on 127.0.0.1 that treats each connection as the script says, on a thread of its own.
class HostileServer {
public:
    using Script = std::function<void(const Peer&)>;

    explicit HostileServer(Script script) : script_(std::move(script)) {
        ::listen(listener_.get(), 16);
        acceptor_ = std::thread([this] { acceptAll(); });
    }
    ~HostileServer() {
        ::shutdown(listener_.get(), SHUT_RDWR);
        acceptor_.join();
        for (const Peer& peer : peers_)
            ::shutdown(peer.descriptor.get(), SHUT_RDWR);
    }

    std::string authority() const {
        sockaddr_in address{};
        socklen_t length = sizeof address;
        ::getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &length);
        return "127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
    std::string url() const { return "http://" + authority() + "/"; }

    std::atomic<int> connectionCount = 0;
    /// Scripts that have ended.
    std::atomic<int> endedCount = 0;

private:
    void acceptAll() {
        int descriptor = -1;
        while ((descriptor = ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC)) >= 0) {
            ++connectionCount;
            const Peer& peer = peers_.emplace_back(UniqueDescriptor(descriptor));
            scripts_.emplace_back([this, &peer] {
                script_(peer);
                ::shutdown(peer.descriptor.get(), SHUT_RDWR);
                ++endedCount;
            });
        }
    }

    Script script_;
    UniqueDescriptor listener_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::list<Peer> peers_;
    std::list<std::jthread> scripts_;
    std::thread acceptor_;
};

} // namespace tolvo::testing
