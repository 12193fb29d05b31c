#pragma once

#include "core/adaptive_monitoring_controlling.h"
#include "core/app_settings_storing.h"
#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/network_identity.h"
#include "core/network_change_observing.h"
#include "core/sleep_providing.h"
#include "core/sleep_wake_observing.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Decides whether the continuous monitors run and how fast they poll, from the user's switches, the popover, the
/// system's sleep and changes of the network. Monitors know nothing of these: they are told what to do. The observers
/// call back into this object and outlive it. Main thread only.
class MonitoringLifecycleController final {
public:
    /// Seconds.
    struct Configuration {
        double activePollInterval = 0.5;
        double backgroundPollInterval = 4.0;
        double networkChangeFastPollingDuration = 30.0;
    };
    using Monitors = std::vector<std::reference_wrapper<AdaptiveMonitoringControlling>>;

    /// The monitors are told everything in the order given. Without networkIdentity, only the path observer tells of
    /// changes of the network.
    MonitoringLifecycleController(MainLoop& loop, Configuration configuration, Monitors monitors,
                                  NetworkChangeObserving& networkChangeObserver, SleepWakeObserving& sleepWakeObserver,
                                  SleepProviding& sleeper, AppSettingsStoring& settingsStore,
                                  Published<std::optional<NetworkIdentity>>* networkIdentity);
    MonitoringLifecycleController(const MonitoringLifecycleController&) = delete;
    MonitoringLifecycleController& operator=(const MonitoringLifecycleController&) = delete;
    ~MonitoringLifecycleController();

    /// Monitors are running, or are paused only for the system's sleep.
    Published<bool> isMonitoringEnabled;
    /// Written by who owns the popover, who then calls applyPollInterval().
    Published<bool> isPopoverPresented;
    Published<bool> isBatteryFriendly{true};

    std::string statusMessage() const;

    /// Starts the observers, then the monitors if the stored switch says so.
    void start();
    /// Stops the observers, then the monitors. The stored switch stays.
    void shutdown();

    // Without touching the stored switch.
    void enableMonitoring();
    void disableMonitoring();

    // The user's switches: stored, then carried out.
    void setMonitoringEnabled(bool isEnabled);
    void setBatteryFriendly(bool isFriendly);

    /// Gives the interval that the present mode calls for to all monitors; nothing while monitoring is off.
    void applyPollInterval();
    void refreshMonitorsNow();

private:
    void handleNetworkChange();
    void handleWillSleep();
    void handleDidWake();
    void handleObservedIdentity(const std::optional<NetworkIdentity>& identity);

    double currentPollInterval() const;
    void resetMonitors();
    void scheduleFastPollingEnd();
    void cancelFastPollingEnd();
    Task<void> endFastPolling();

    const Configuration configuration_;
    const Monitors monitors_;
    NetworkChangeObserving& networkChangeObserver_;
    SleepWakeObserving& sleepWakeObserver_;
    SleepProviding& sleeper_;
    AppSettingsStoring& settingsStore_;

    bool isNetworkFastPollingActive_ = false;
    bool isPausedForSystemSleep_ = false;
    bool hasStartedObservers_ = false;
    bool hasObservedInitialNetworkIdentity_ = false;
    std::optional<NetworkIdentity> latestObservedNetworkIdentity_;
    bool isApplyingTransientReset_ = false;
    std::optional<TaskHandle> networkChangeFastPollingTask_;

    Subscription identitySubscription_;
    TaskScope tasks_;
};

} // namespace tolvo
