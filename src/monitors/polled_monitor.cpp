#include "monitors/polled_monitor.h"

#include <algorithm>

namespace tolvo {

PolledMonitor::PolledMonitor(MainLoop& loop, SleepProviding& sleeper, double pollInterval)
    : pollInterval_(std::max(pollInterval, 0.0)),
      pollingLoop_(loop, sleeper, pollInterval_, [this] { return poll(); }) {}

void PolledMonitor::startMonitoring() {
    pollingLoop_.start();
}

void PolledMonitor::stopMonitoring() {
    pollingLoop_.stop();
}

void PolledMonitor::updatePollInterval(double seconds) {
    pollInterval_ = std::max(seconds, 0.0);
    pollingLoop_.updatePollInterval(pollInterval_);
}

void PolledMonitor::refreshNow() {
    pollingLoop_.requestImmediatePoll();
}

} // namespace tolvo
