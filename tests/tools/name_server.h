#pragma once

#include "platform/linux/unique_descriptor.h"

#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace tolvo::test {

using Packet = std::vector<std::uint8_t>;

/// The packets that a query brings, none for silence.
using Answering = std::function<std::vector<Packet>(const Packet& query)>;

/// The query as an answer: with this response code, and that many of the given record data as A records.
Packet answerTo(const Packet& query, std::uint8_t responseCode = 0, int addressCount = 1);

/// A name server at port 53 of a loopback address, on a thread of its own. Over TCP it answers one query a connection.
class NameServer {
public:
    NameServer(const std::string& address, Answering overUDP, Answering overTCP = {});
    ~NameServer();

private:
    void serve(const std::stop_token& stop);
    void serveDatagram();
    void serveStream();

    Answering overUDP_;
    Answering overTCP_;
    UniqueDescriptor datagrams_;
    UniqueDescriptor streams_;
    std::jthread thread_;
};

} // namespace tolvo::test
