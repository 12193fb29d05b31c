#include "platform/linux/netlink_path_monitor.h"

#include "platform/linux/network_path_evaluation.h"
#include "platform/linux/routing_state.h"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

namespace tolvo {

namespace {

/// From the first event of a burst to the reading. Taking a link down or joining a network is a dozen events within
/// some 10 ms; the states between them are nobody's path, and would each be told as a change. Further events don't put
/// it off, so a storm of them costs ten readings a second and starves nothing.
constexpr Seconds settleDelay(0.1);

/// A reading during which events arrived may be half old and half new, and is made again this often at most.
constexpr int mostDiscardedReadings = 3;

constexpr Seconds firstRetryDelay(1);
constexpr Seconds longestRetryDelay(60);

constexpr unsigned groupBit(unsigned group) {
    return 1U << (group - 1);
}
constexpr unsigned watchedGroups = groupBit(RTNLGRP_LINK) | groupBit(RTNLGRP_IPV4_IFADDR) |
                                   groupBit(RTNLGRP_IPV6_IFADDR) | groupBit(RTNLGRP_IPV4_ROUTE) |
                                   groupBit(RTNLGRP_IPV6_ROUTE) | groupBit(RTNLGRP_IPV4_RULE) |
                                   groupBit(RTNLGRP_IPV6_RULE);

UniqueDescriptor openEventSocket() {
    UniqueDescriptor socket(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_ROUTE));
    sockaddr_nl address{};
    address.nl_family = AF_NETLINK;
    address.nl_groups = watchedGroups;
    if (socket && ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        socket.reset();
    return socket;
}

enum class Drained { Nothing, Events, Broken };

/// More than the socket's buffer holds: whoever fills it faster than this empties it must not keep the loop.
constexpr int mostDatagramsAtOnce = 4096;

/// Empties the socket without looking at what the events say. An overrun is an event too.
Drained drain(int socket) {
    auto drained = Drained::Nothing;
    for (int i = 0; i < mostDatagramsAtOnce; ++i) {
        char ignored = 0;
        if (::recv(socket, &ignored, sizeof ignored, MSG_TRUNC) >= 0 || errno == ENOBUFS)
            drained = Drained::Events;
        else if (errno == EAGAIN)
            break;
        else if (errno != EINTR)
            return Drained::Broken;
    }
    return drained;
}

} // namespace

NetlinkPathMonitor::NetlinkPathMonitor(MainLoop& loop, std::filesystem::path sysClassNet)
    : loop_(loop), sysClassNet_(std::move(sysClassNet)) {}

void NetlinkPathMonitor::start(Handler pathUpdateHandler) {
    cancel();
    handler_ = std::move(pathUpdateHandler);
    retryDelay_ = firstRetryDelay;
    open();
}

void NetlinkPathMonitor::cancel() {
    timer_.reset();
    watch_.reset();
    events_.reset();
    isEvaluationDue_ = false;
    discardedReadings_ = 0;
    handler_ = nullptr;
}

void NetlinkPathMonitor::open() {
    events_ = openEventSocket();
    if (!events_) {
        openLater();
        return;
    }
    watch_ = loop_.watch(events_.get(), DescriptorEvent::Readable, [this] { handleEvents(); });
    // What happens from here on is an event, so nothing falls between the socket and the first reading.
    evaluateAfter(Seconds(0));
}

void NetlinkPathMonitor::openLater() {
    watch_.reset();
    events_.reset();
    isEvaluationDue_ = false;
    timer_ = loop_.after(retryDelay_, [this] { open(); });
    retryDelay_ = std::min(retryDelay_ * 2, longestRetryDelay);
}

void NetlinkPathMonitor::handleEvents() {
    const Drained drained = drain(events_.get());
    if (drained == Drained::Broken)
        openLater();
    else if (drained == Drained::Events && !isEvaluationDue_)
        evaluateAfter(settleDelay);
}

void NetlinkPathMonitor::evaluateAfter(Seconds delay) {
    isEvaluationDue_ = true;
    timer_ = loop_.after(delay, [this] { evaluate(); });
}

void NetlinkPathMonitor::evaluate() {
    isEvaluationDue_ = false;
    const Drained before = drain(events_.get());
    const std::optional<RoutingState> state = readRoutingState();
    const NetworkPath path = state ? evaluateNetworkPath(*state, sysClassNet_) : NetworkPath{};
    const Drained meanwhile = drain(events_.get());
    const bool isOutdated = meanwhile == Drained::Events && discardedReadings_ < mostDiscardedReadings;
    if (before == Drained::Broken || meanwhile == Drained::Broken || (!state && !isOutdated)) {
        openLater();
    } else if (isOutdated) {
        ++discardedReadings_;
        evaluateAfter(settleDelay);
    } else {
        // Events that were drained above belong to a state that may be newer than what is told.
        if (meanwhile == Drained::Events)
            evaluateAfter(settleDelay);
        tell(path);
    }
}

void NetlinkPathMonitor::tell(const NetworkPath& path) {
    discardedReadings_ = 0;
    retryDelay_ = firstRetryDelay;
    // The handler may cancel, and with that drop what is being called.
    const Handler handler = handler_;
    handler(path);
}

} // namespace tolvo
