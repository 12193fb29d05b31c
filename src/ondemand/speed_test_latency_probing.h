#pragma once

#include "core/async/task.h"
#include "probes/ping_probe_running.h"

#include <string>

namespace tolvo {

/// Measures one round trip.
class SpeedTestLatencyProbing {
public:
    SpeedTestLatencyProbing(const SpeedTestLatencyProbing&) = delete;
    SpeedTestLatencyProbing& operator=(const SpeedTestLatencyProbing&) = delete;
    virtual ~SpeedTestLatencyProbing() = default;

    /// Never fails; a measurement without a reply says so. The time-out is in seconds.
    virtual Task<PingProbeMeasurement> probeLatency(std::string host, double timeout) = 0;

protected:
    SpeedTestLatencyProbing() = default;
};

} // namespace tolvo
