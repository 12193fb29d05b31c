#pragma once

#include "core/async/main_loop.h"
#include "tests/support/dashboard_values.h"

#include <string>
#include <vector>

namespace tolvo::testing {

/// Feeds a dashboard's values as a network would, a poll every half second. The scene names what the network is like:
/// "good", "warning", "poor", "offline", "portal", "paused" or "empty".
class SimulatedNetwork {
public:
    SimulatedNetwork(MainLoop& loop, std::string scene);

    DashboardValues values;
    Published<std::vector<ConnectionPressureResult>> connectionHistory;
    std::string statusMessage = "Monitoring active in detailed mode.";

    void setMonitoringEnabled(bool isEnabled);
    DashboardSources sources();

private:
    void poll();
    void pollWiFi();
    void pollLatency();
    void pollConnections();
    double wave(double middle, double swing, double period) const;

    MainLoop& loop_;
    std::string scene_;
    double badness_;
    int count_ = 0;
    LoopRegistration next_;
};

} // namespace tolvo::testing
