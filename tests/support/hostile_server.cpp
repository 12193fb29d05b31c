#include "tests/support/hostile_server.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace tolvo::testing {

std::string Peer::receiveHead() {
    std::string head;
    char byte = 0;
    while (!head.ends_with("\r\n\r\n") && ::recv(descriptor(), &byte, 1, 0) == 1)
        head += byte;
    return head;
}

bool Peer::receive(std::size_t count) {
    std::array<char, 65536> buffer{};
    while (count > 0) {
        const auto size = ::recv(descriptor(), buffer.data(), std::min(buffer.size(), count), 0);
        if (size <= 0)
            return false;
        count -= static_cast<std::size_t>(size);
    }
    return true;
}

bool Peer::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto size = ::send(descriptor(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (size <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

void Peer::pause(int milliseconds) {
    pollfd entry{descriptor(), 0, 0};
    ::poll(&entry, 1, milliseconds);
}

bool Peer::waitForClose(int milliseconds) {
    pollfd entry{descriptor(), POLLIN, 0};
    while (::poll(&entry, 1, milliseconds) > 0) {
        std::array<char, 65536> buffer;
        if (::recv(descriptor(), buffer.data(), buffer.size(), 0) <= 0)
            return true;
    }
    return false;
}

HostileServer::HostileServer(Script script)
    : script_(std::move(script)), listener_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listener_.get(), generic, length) != 0 || ::listen(listener_.get(), 16) != 0 ||
        ::getsockname(listener_.get(), generic, &length) != 0)
        throw std::runtime_error("no server on 127.0.0.1");
    port_ = ntohs(address.sin_port);
    acceptor_ = std::thread([this] { acceptAll(); });
}

HostileServer::~HostileServer() {
    ::shutdown(listener_.get(), SHUT_RDWR);
    acceptor_.join();
    for (const Peer& peer : peers_)
        ::shutdown(peer.descriptor(), SHUT_RDWR);
    for (std::thread& thread : scripts_)
        thread.join();
}

std::string HostileServer::url(std::string_view scheme) const {
    return std::string(scheme) + "://127.0.0.1:" + std::to_string(port_) + "/";
}

void HostileServer::acceptAll() {
    while (true) {
        const int descriptor = ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC);
        if (descriptor < 0)
            return;
        ++connectionCount_;
        Peer& peer = peers_.emplace_back(descriptor);
        scripts_.emplace_back([this, &peer] {
            script_(peer);
            ::shutdown(peer.descriptor(), SHUT_RDWR);
            ++endedCount_;
        });
    }
}

} // namespace tolvo::testing
