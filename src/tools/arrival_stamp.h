#pragma once

#include <chrono>
#include <cstddef>
#include <expected>
#include <span>

namespace tolvo::tools {

/// Has the kernel stamp what arrives on this socket, so that whoever comes late to it measures right all the same.
bool stampArrivals(int socket);

struct StampedDatagram {
    std::size_t size = 0;
    /// When the kernel had it, by the wall clock.
    std::chrono::nanoseconds arrival{};
};

/// The next datagram of a socket that stampArrivals was asked for, cut to the buffer; else an errno value, EAGAIN when
/// none is there.
std::expected<StampedDatagram, int> receiveStamped(int socket, std::span<std::byte> buffer);

/// When something was sent: by the wall clock, which arrivals are stamped with, and by the one that nobody sets.
class Departure {
public:
    Departure();

    /// How long the answer took that arrived then.
    std::chrono::nanoseconds untilArrival(std::chrono::nanoseconds arrival) const;
    std::chrono::steady_clock::time_point time() const { return time_; }

private:
    std::chrono::nanoseconds wallTime_;
    std::chrono::steady_clock::time_point time_;
};

} // namespace tolvo::tools
