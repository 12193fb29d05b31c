#include "core/monitoring_lifecycle_controller.h"

#include <utility>

namespace tolvo {

namespace {

using Identity = std::optional<NetworkIdentity>;

/// Whether the network became another one. Losing it is no change: that is seen when one is back. An address that
/// comes or goes is none either, because it arrives after the first reading of a network.
bool isOtherNetwork(const Identity& previous, const Identity& current) {
    if (!previous || !current)
        return current.has_value();
    if (previous->interfaceName != current->interfaceName || previous->ssid != current->ssid ||
        previous->bssid != current->bssid)
        return true;
    return previous->ipAddress && current->ipAddress && *previous->ipAddress != *current->ipAddress;
}

} // namespace

MonitoringLifecycleController::MonitoringLifecycleController(MainLoop& loop, Configuration configuration,
                                                             Monitors monitors,
                                                             NetworkChangeObserving& networkChangeObserver,
                                                             SleepWakeObserving& sleepWakeObserver,
                                                             SleepProviding& sleeper, AppSettingsStoring& settingsStore,
                                                             Published<Identity>* networkIdentity)
    : configuration_(configuration),
      monitors_(std::move(monitors)),
      networkChangeObserver_(networkChangeObserver),
      sleepWakeObserver_(sleepWakeObserver),
      sleeper_(sleeper),
      settingsStore_(settingsStore),
      tasks_(loop) {
    isBatteryFriendly.set(settingsStore_.batteryFriendly());
    networkChangeObserver_.onNetworkChange = [this] { handleNetworkChange(); };
    sleepWakeObserver_.onWillSleep = [this] { handleWillSleep(); };
    sleepWakeObserver_.onDidWake = [this] { handleDidWake(); };
    if (networkIdentity)
        identitySubscription_ =
            networkIdentity->subscribe([this](const Identity& identity) { handleObservedIdentity(identity); });
}

MonitoringLifecycleController::~MonitoringLifecycleController() {
    networkChangeObserver_.onNetworkChange = nullptr;
    sleepWakeObserver_.onWillSleep = nullptr;
    sleepWakeObserver_.onDidWake = nullptr;
}

std::string MonitoringLifecycleController::statusMessage() const {
    if (!isMonitoringEnabled.value())
        return "Monitoring is paused.";
    if (!isBatteryFriendly.value())
        return "Monitoring active in high-frequency mode.";
    if (isPopoverPresented.value())
        return "Monitoring active in detailed mode.";
    return "Monitoring active in background mode.";
}

void MonitoringLifecycleController::start() {
    isBatteryFriendly.set(settingsStore_.batteryFriendly());
    if (!std::exchange(hasStartedObservers_, true)) {
        networkChangeObserver_.startObserving();
        sleepWakeObserver_.startObserving();
    }
    if (settingsStore_.monitoringEnabled())
        enableMonitoring();
    else
        disableMonitoring();
}

void MonitoringLifecycleController::shutdown() {
    if (std::exchange(hasStartedObservers_, false)) {
        networkChangeObserver_.stopObserving();
        sleepWakeObserver_.stopObserving();
    }
    disableMonitoring();
}

void MonitoringLifecycleController::enableMonitoring() {
    if (isMonitoringEnabled.value())
        return;
    isMonitoringEnabled.set(true);
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.startMonitoring();
    applyPollInterval();
}

void MonitoringLifecycleController::disableMonitoring() {
    if (!isMonitoringEnabled.value())
        return;
    cancelFastPollingEnd();
    isNetworkFastPollingActive_ = false;
    isPausedForSystemSleep_ = false;
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.stopMonitoring();
    isMonitoringEnabled.set(false);
}

void MonitoringLifecycleController::setMonitoringEnabled(bool isEnabled) {
    settingsStore_.setMonitoringEnabled(isEnabled);
    if (isEnabled)
        enableMonitoring();
    else
        disableMonitoring();
}

void MonitoringLifecycleController::setBatteryFriendly(bool isFriendly) {
    settingsStore_.setBatteryFriendly(isFriendly);
    isBatteryFriendly.set(isFriendly);
    if (!isFriendly) {
        cancelFastPollingEnd();
        isNetworkFastPollingActive_ = false;
    }
    applyPollInterval();
}

double MonitoringLifecycleController::currentPollInterval() const {
    const bool isFast = !isBatteryFriendly.value() || isPopoverPresented.value() || isNetworkFastPollingActive_;
    return isFast ? configuration_.activePollInterval : configuration_.backgroundPollInterval;
}

void MonitoringLifecycleController::applyPollInterval() {
    if (!isMonitoringEnabled.value())
        return;
    const double interval = currentPollInterval();
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.updatePollInterval(interval);
}

void MonitoringLifecycleController::refreshMonitorsNow() {
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.refreshNow();
}

void MonitoringLifecycleController::resetMonitors() {
    // A reset clears the published identity, and that must not be taken for a loss of the network.
    isApplyingTransientReset_ = true;
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.resetTransientState();
    isApplyingTransientReset_ = false;
}

void MonitoringLifecycleController::handleNetworkChange() {
    if (!isMonitoringEnabled.value())
        return;
    resetMonitors();
    isNetworkFastPollingActive_ = isBatteryFriendly.value();
    applyPollInterval();
    refreshMonitorsNow();
    if (isNetworkFastPollingActive_)
        scheduleFastPollingEnd();
}

void MonitoringLifecycleController::scheduleFastPollingEnd() {
    cancelFastPollingEnd();
    networkChangeFastPollingTask_ = tasks_.start(endFastPolling());
}

void MonitoringLifecycleController::cancelFastPollingEnd() {
    if (const auto task = std::exchange(networkChangeFastPollingTask_, std::nullopt))
        task->cancel();
}

Task<void> MonitoringLifecycleController::endFastPolling() {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    co_await sleeper_.sleep(configuration_.networkChangeFastPollingDuration);
    // A sleep that was over when the cancellation came doesn't tell of it, and the window may be a newer one.
    if (stopToken.stop_requested() || !isNetworkFastPollingActive_)
        co_return;
    isNetworkFastPollingActive_ = false;
    applyPollInterval();
}

void MonitoringLifecycleController::handleWillSleep() {
    if (!isMonitoringEnabled.value() || isPausedForSystemSleep_)
        return;
    isPausedForSystemSleep_ = true;
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.stopMonitoring();
}

void MonitoringLifecycleController::handleDidWake() {
    if (!isMonitoringEnabled.value() || !isPausedForSystemSleep_)
        return;
    resetMonitors();
    for (AdaptiveMonitoringControlling& monitor : monitors_)
        monitor.startMonitoring();
    isPausedForSystemSleep_ = false;
    applyPollInterval();
    refreshMonitorsNow();
}

void MonitoringLifecycleController::handleObservedIdentity(const Identity& identity) {
    if (isApplyingTransientReset_)
        return;
    if (!hasObservedInitialNetworkIdentity_) {
        hasObservedInitialNetworkIdentity_ = identity.has_value();
        latestObservedNetworkIdentity_ = identity;
        return;
    }
    const bool didChange = isOtherNetwork(latestObservedNetworkIdentity_, identity);
    latestObservedNetworkIdentity_ = identity;
    if (didChange)
        handleNetworkChange();
}

} // namespace tolvo
