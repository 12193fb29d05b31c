#include "tools/arrival_stamp.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <ctime>

namespace tolvo::tools {

namespace {

std::chrono::nanoseconds duration(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

std::chrono::nanoseconds wallClock() {
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return duration(time);
}

/// The kernel's stamp; the present time where it gives none.
std::chrono::nanoseconds arrivalOf(msghdr& message) {
    for (cmsghdr* control = CMSG_FIRSTHDR(&message); control != nullptr; control = CMSG_NXTHDR(&message, control)) {
        if (control->cmsg_level != SOL_SOCKET || control->cmsg_type != SCM_TIMESTAMPNS)
            continue;
        timespec time{};
        std::memcpy(&time, CMSG_DATA(control), sizeof time);
        return duration(time);
    }
    return wallClock();
}

} // namespace

bool stampArrivals(int socket) {
    const int on = 1;
    return ::setsockopt(socket, SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof on) == 0;
}

std::expected<StampedDatagram, int> receiveStamped(int socket, std::span<std::byte> buffer) {
    iovec part{buffer.data(), buffer.size()};
    alignas(cmsghdr) std::array<char, 256> control;
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = ::recvmsg(socket, &message, 0);
    if (size < 0)
        return std::unexpected(errno);
    return StampedDatagram{static_cast<std::size_t>(size), arrivalOf(message)};
}

Departure::Departure() : wallTime_(wallClock()), time_(std::chrono::steady_clock::now()) {}

std::chrono::nanoseconds Departure::untilArrival(std::chrono::nanoseconds arrival) const {
    const std::chrono::nanoseconds stamped = arrival - wallTime_;
    const std::chrono::nanoseconds elapsed = std::chrono::steady_clock::now() - time_;
    // The wall clock may have been set meanwhile.
    return stamped.count() >= 0 && stamped <= elapsed ? stamped : elapsed;
}

} // namespace tolvo::tools
