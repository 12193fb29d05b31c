#pragma once

#include "ondemand/speed_test_latency_probing.h"

namespace tolvo {

/// Pings with a runner that sends as many echo requests as one probe shall have.
class PingProbeLatencyProber final : public SpeedTestLatencyProbing {
public:
    explicit PingProbeLatencyProber(PingProbeRunning& pingProbeRunner) : pingProbeRunner_(pingProbeRunner) {}

    Task<PingProbeMeasurement> probeLatency(std::string host, double timeout) override {
        return pingProbeRunner_.ping(std::move(host), timeout);
    }

private:
    PingProbeRunning& pingProbeRunner_;
};

} // namespace tolvo
