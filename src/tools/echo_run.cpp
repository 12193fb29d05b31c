#include "tools/echo_run.h"

#include "core/async/readiness.h"
#include "tools/text_output.h"

#include <algorithm>
#include <cerrno>
#include <cmath>

namespace tolvo::tools {

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 1s;

/// With three decimals.
void appendThousandths(std::string& out, std::uint64_t number) {
    appendNumber(out, number / 1000);
    const std::string fraction = std::to_string(1000 + number % 1000);
    out.append(".").append(fraction, 1);
}

void appendMilliseconds(std::string& out, std::chrono::microseconds time) {
    appendThousandths(out, static_cast<std::uint64_t>(time.count()));
}

} // namespace

Task<void> EchoRun::run() {
    start_ = due_ = Clock::now();
    sendNext();
    while (!isComplete()) {
        co_await readinessOf(socket_.descriptor(), DescriptorEvent::Readable, due_);
        takeReplies();
        if (isComplete() || Clock::now() < due_)
            continue;
        if (requests_.size() == count_)
            break;
        sendNext();
    }
    duration_ = Clock::now() - start_;
}

void EchoRun::sendNext() {
    requests_.emplace_back();
    // What couldn't leave is as lost as what never came back.
    socket_.send(static_cast<std::uint16_t>(requests_.size()));
    if (requests_.size() < count_)
        due_ += interval;
    else
        due_ = requests_.back().departure.time() + std::chrono::duration_cast<Clock::duration>(patience());
}

std::chrono::nanoseconds EchoRun::patience() const {
    if (times_.empty())
        return wait_;
    return std::max<std::chrono::nanoseconds>(2 * std::ranges::max(times_), interval);
}

void EchoRun::takeReplies() {
    while (!isComplete()) {
        const auto reply = socket_.receive();
        if (reply)
            take(*reply);
        else if (reply.error() == EAGAIN)
            return;
        else if (reply.error() != EINTR)
            ++errorCount_;
    }
}

void EchoRun::take(const EchoReply& reply) {
    if (reply.sequence == 0 || reply.sequence > requests_.size())
        return;
    Request& request = requests_[reply.sequence - 1U];
    if (std::exchange(request.isAnswered, true))
        return;
    times_.push_back(
        std::chrono::duration_cast<std::chrono::microseconds>(request.departure.untilArrival(reply.arrival)));
    replyLines_ += "64 bytes: icmp_seq=";
    appendNumber(replyLines_, reply.sequence);
    replyLines_ += " time=";
    appendMilliseconds(replyLines_, times_.back());
    replyLines_ += " ms\n";
}

std::string EchoRun::report(std::string_view host) const {
    std::string out = "PING ";
    out.append(host).append(" 56(84) bytes of data.\n").append(replyLines_);
    out.append("\n--- ").append(host).append(" ping statistics ---\n").append(statistics());
    return out.append(timesLine());
}

std::string EchoRun::statistics() const {
    std::string out;
    appendNumber(out, requests_.size());
    out += " packets transmitted, ";
    appendNumber(out, times_.size());
    out += " received, ";
    if (errorCount_ > 0) {
        out += '+';
        appendNumber(out, errorCount_);
        out += " errors, ";
    }
    const std::uint64_t lossThousandths = 100'000 * (requests_.size() - times_.size()) / requests_.size();
    if (lossThousandths % 1000 == 0)
        appendNumber(out, lossThousandths / 1000);
    else
        appendThousandths(out, lossThousandths);
    out += "% packet loss, time ";
    appendNumber(out, static_cast<std::uint64_t>(std::chrono::floor<std::chrono::milliseconds>(duration_).count()));
    return out + "ms\n";
}

std::string EchoRun::timesLine() const {
    if (times_.empty())
        return "\n";
    double sum = 0;
    double squares = 0;
    for (const auto time : times_) {
        sum += static_cast<double>(time.count());
        squares += static_cast<double>(time.count()) * static_cast<double>(time.count());
    }
    const double count = static_cast<double>(times_.size());
    const double deviation = std::sqrt(std::max(squares / count - sum / count * (sum / count), 0.0));
    std::string out = "rtt min/avg/max/mdev = ";
    appendMilliseconds(out, std::ranges::min(times_));
    appendMilliseconds(out += '/', std::chrono::microseconds(std::llround(sum / count)));
    appendMilliseconds(out += '/', std::ranges::max(times_));
    appendMilliseconds(out += '/', std::chrono::microseconds(std::llround(deviation)));
    return out + " ms\n";
}

} // namespace tolvo::tools
