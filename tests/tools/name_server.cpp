#include "tests/tools/name_server.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <array>

namespace tolvo::test {

namespace {

constexpr std::size_t headerSize = 12;

UniqueDescriptor listenForBothFamilies(int type) {
    UniqueDescriptor socket(::socket(AF_INET6, type | SOCK_CLOEXEC, 0));
    sockaddr_in6 local{};
    local.sin6_family = AF_INET6;
    local.sin6_port = htons(53);
    const int on = 1;
    ::setsockopt(socket.get(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    EXPECT_EQ(::bind(socket.get(), reinterpret_cast<sockaddr*>(&local), sizeof local), 0);
    ::listen(socket.get(), 8);
    return socket;
}

} // namespace

Packet answerTo(const Packet& query, std::uint8_t responseCode, int addressCount) {
    // Its question ends four bytes behind the name's root label.
    std::size_t end = headerSize;
    while (query.at(end) != 0)
        end += query[end] + 1U;
    Packet answer(query.begin(), query.begin() + static_cast<std::ptrdiff_t>(end) + 5);
    answer[2] = 0x81;
    answer[3] = static_cast<std::uint8_t>(0x80 | responseCode);
    answer[7] = static_cast<std::uint8_t>(addressCount);
    answer[8] = answer[9] = answer[10] = answer[11] = 0;
    for (int i = 0; i < addressCount; ++i)
        answer.insert(answer.end(), {0xC0, headerSize, 0, 1, 0, 1, 0, 0, 0, 60, 0, 4, 192, 0, 2, 7});
    return answer;
}

NameServer::NameServer(Answering overUDP, Answering overTCP)
    : overUDP_(std::move(overUDP)),
      overTCP_(std::move(overTCP)),
      datagrams_(listenForBothFamilies(SOCK_DGRAM)),
      streams_(listenForBothFamilies(SOCK_STREAM)),
      thread_([this](const std::stop_token& stop) {
          while (!stop.stop_requested()) {
              std::array<pollfd, 2> sockets{{{datagrams_.get(), POLLIN, 0}, {streams_.get(), POLLIN, 0}}};
              ::poll(sockets.data(), sockets.size(), 20);
              if (sockets[0].revents != 0)
                  serveDatagram();
              if (sockets[1].revents != 0)
                  serveStream();
          }
      }) {}

void NameServer::serveDatagram() const {
    Packet query(65536);
    sockaddr_storage peer{};
    socklen_t size = sizeof peer;
    const ssize_t length =
        ::recvfrom(datagrams_.get(), query.data(), query.size(), 0, reinterpret_cast<sockaddr*>(&peer), &size);
    if (length < 0)
        return;
    query.resize(static_cast<std::size_t>(length));
    for (const Packet& packet : overUDP_(query))
        ::sendto(datagrams_.get(), packet.data(), packet.size(), 0, reinterpret_cast<sockaddr*>(&peer), size);
}

void NameServer::serveStream() const {
    const UniqueDescriptor connection(::accept(streams_.get(), nullptr, nullptr));
    Packet framed(65538);
    const ssize_t length = ::recv(connection.get(), framed.data(), framed.size(), 0);
    if (length < 2 || !overTCP_)
        return;
    const Packet query(framed.begin() + 2, framed.begin() + length);
    for (const Packet& packet : overTCP_(query)) {
        Packet reply{static_cast<std::uint8_t>(packet.size() >> 8), static_cast<std::uint8_t>(packet.size())};
        reply.insert(reply.end(), packet.begin(), packet.end());
        ::send(connection.get(), reply.data(), reply.size(), MSG_NOSIGNAL);
    }
}

} // namespace tolvo::test
