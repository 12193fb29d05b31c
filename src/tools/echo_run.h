#pragma once

#include "core/async/task.h"
#include "tools/arrival_stamp.h"
#include "tools/echo_socket.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo::tools {

/// Requests a second apart, as the installed ping has them, with its rules of waiting: the end comes with the last
/// answer; a path that answered before the last request gets twice its longest time for that one, but at least a
/// second; one that didn't gets `wait`. Until then a late reply counts, whichever request it answers.
class EchoRun {
public:
    EchoRun(const EchoSocket& socket, std::uint16_t count, std::chrono::milliseconds wait)
        : socket_(socket), count_(count), wait_(wait) {}

    /// On a loop, once.
    Task<void> run();

    bool hasReplies() const { return !times_.empty(); }
    /// The installed ping's lines.
    std::string report(std::string_view host) const;

private:
    using Clock = std::chrono::steady_clock;
    struct Request {
        Departure departure;
        bool isAnswered = false;
    };

    bool isComplete() const { return times_.size() + errorCount_ >= count_; }
    void sendNext();
    std::chrono::nanoseconds patience() const;
    void takeReplies();
    void take(const EchoReply& reply);
    std::string statistics() const;
    std::string timesLine() const;

    const EchoSocket& socket_;
    const std::size_t count_;
    const std::chrono::milliseconds wait_;
    std::vector<Request> requests_;
    std::vector<std::chrono::microseconds> times_;
    std::size_t errorCount_ = 0;
    Clock::time_point start_;
    /// When the next request is due, or the waiting ends.
    Clock::time_point due_;
    Clock::duration duration_{};
    std::string replyLines_;
};

} // namespace tolvo::tools
