#pragma once

#include "platform/linux/unique_descriptor.h"

#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

namespace tolvo::test {

using Packet = std::vector<std::uint8_t>;

/// The packets that a query brings, none for silence.
using Answering = std::function<std::vector<Packet>(const Packet& query)>;

/// The query as an answer: with this response code, and that many addresses.
Packet answerTo(const Packet& query, std::uint8_t responseCode = 0, int addressCount = 1);

/// A name server at port 53 of every address, on a thread of its own. Over TCP it answers one query a connection.
class NameServer {
public:
    explicit NameServer(Answering overUDP, Answering overTCP = {});

private:
    void serveDatagram() const;
    void serveStream() const;

    Answering overUDP_;
    Answering overTCP_;
    UniqueDescriptor datagrams_;
    UniqueDescriptor streams_;
    std::jthread thread_;
};

} // namespace tolvo::test
