#pragma once

#include "platform/linux/unique_descriptor.h"

#include <atomic>
#include <functional>
#include <list>
#include <string>
#include <string_view>
#include <thread>

namespace tolvo::testing {

/// One accepted connection, as a script sees it. Every operation ends soon after the other side has closed.
class Peer {
public:
    explicit Peer(int descriptor) : descriptor_(descriptor) {}

    /// Reads up to the end of a request's head and gives it.
    std::string receiveHead();
    /// Reads that many bytes; false when the other side closed first.
    bool receive(std::size_t count);
    bool send(std::string_view bytes);
    /// Lets time pass without reading.
    void pause(int milliseconds);
    /// Drops what arrives until the other side closes or the time has passed; true when it closed.
    bool waitForClose(int milliseconds = -1);
    int descriptor() const { return descriptor_.get(); }

private:
    UniqueDescriptor descriptor_;
};

/// A TCP server on 127.0.0.1 that treats each connection as the script says, on a thread of its own.
class HostileServer {
public:
    using Script = std::function<void(Peer&)>;

    explicit HostileServer(Script script);
    HostileServer(const HostileServer&) = delete;
    HostileServer& operator=(const HostileServer&) = delete;
    ~HostileServer();

    std::string url(std::string_view scheme = "http") const;
    int connectionCount() const { return connectionCount_; }
    /// Scripts that have ended.
    int endedCount() const { return endedCount_; }

private:
    void acceptAll();

    Script script_;
    UniqueDescriptor listener_;
    int port_ = 0;
    std::atomic<int> connectionCount_ = 0;
    std::atomic<int> endedCount_ = 0;
    std::list<Peer> peers_;
    std::list<std::thread> scripts_;
    std::thread acceptor_;
};

} // namespace tolvo::testing
