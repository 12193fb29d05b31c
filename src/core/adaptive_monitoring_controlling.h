#pragma once

namespace tolvo {

/// All that a continuous monitor is told by the one who decides whether and how fast it runs. Main thread only.
class AdaptiveMonitoringControlling {
public:
    AdaptiveMonitoringControlling(const AdaptiveMonitoringControlling&) = delete;
    AdaptiveMonitoringControlling& operator=(const AdaptiveMonitoringControlling&) = delete;
    virtual ~AdaptiveMonitoringControlling() = default;

    /// The first poll comes at once. Does nothing on a running monitor.
    virtual void startMonitoring() = 0;
    /// Latest values and history stay.
    virtual void stopMonitoring() = 0;
    /// Seconds from the end of a poll to the start of the next; less than 0 counts as 0.
    virtual void updatePollInterval(double seconds) = 0;
    /// Asks for a poll at once; caches count as stale.
    virtual void refreshNow() = 0;
    /// Puts latest values, history and what follows from them back to what they were at construction.
    virtual void resetTransientState() = 0;

protected:
    AdaptiveMonitoringControlling() = default;
};

} // namespace tolvo
