#pragma once

#include "core/adaptive_monitoring_controlling.h"
#include "core/interruptible_polling_loop.h"

namespace tolvo {

/// A monitor that does its work in polls: what it is told goes to its polling loop. A derived class gives the poll and
/// the reset, and adds to the other operations only what it holds beside the loop. When it ends, a suspended poll's
/// frame goes after the derived class's fields, so nothing in that frame may look at them while it is destroyed.
class PolledMonitor : public AdaptiveMonitoringControlling {
public:
    void startMonitoring() override;
    void stopMonitoring() override;
    void updatePollInterval(double seconds) override;
    void refreshNow() override;

    double pollInterval() const { return pollInterval_; }

protected:
    /// The interval is in seconds; less than 0 counts as 0.
    PolledMonitor(MainLoop& loop, SleepProviding& sleeper, double pollInterval);

    /// One poll. Polls never overlap. A poll that is cancelled goes on to its end with what its probe then gives.
    virtual Task<void> poll() = 0;

private:
    double pollInterval_;
    InterruptiblePollingLoop pollingLoop_;
};

} // namespace tolvo
