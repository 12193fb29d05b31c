#pragma once

#include "core/async/task.h"

#include <optional>
#include <string>

namespace tolvo {

struct PingProbeMeasurement {
    std::optional<double> latencyMilliseconds;
    std::optional<double> jitterMilliseconds;
    /// 0 to 100; 100 when ping printed none.
    double packetLossPercent = 100;
    /// Whether replies came: the summary of round trips was there and whole.
    bool didSucceed = false;

    bool operator==(const PingProbeMeasurement&) const = default;
};

/// Finds the router and pings hosts. Neither fails towards its caller, a cancelled one included. Times in seconds.
class PingProbeRunning {
public:
    PingProbeRunning(const PingProbeRunning&) = delete;
    PingProbeRunning& operator=(const PingProbeRunning&) = delete;
    virtual ~PingProbeRunning() = default;

    /// The time-out is each tool's; up to four run one after the other.
    virtual Task<std::optional<std::string>> routerIPAddress(double timeout) = 0;
    /// The host is an IPv4 address, an IPv6 address with or without zone, or a name; the time-out is each reply's.
    virtual Task<PingProbeMeasurement> ping(std::string host, double timeout) = 0;

protected:
    PingProbeRunning() = default;
};

} // namespace tolvo
