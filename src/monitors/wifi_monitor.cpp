#include "monitors/wifi_monitor.h"

#include "core/async/when_all.h"
#include "core/sample_history.h"
#include "probes/wifi_link.h"

#include <utility>

namespace tolvo {

namespace {

NetworkIdentity identityOf(const WiFiSnapshot& snapshot) {
    return {snapshot.interfaceName, snapshot.ssid, snapshot.bssid, snapshot.ipAddress};
}

bool isSameAttachment(const WiFiSnapshot& snapshot, const NetworkIdentity& identity) {
    return snapshot.interfaceName == identity.interfaceName && snapshot.ssid == identity.ssid &&
           snapshot.bssid == identity.bssid;
}

} // namespace

WiFiMonitor::WiFiMonitor(MainLoop& loop, Configuration configuration, WiFiInterfaceProviding& interfaceProvider,
                         WiFiNetworkMetadataResolving& metadataResolver, SleepProviding& sleeper,
                         DateProvider dateProvider)
    : PolledMonitor(loop, sleeper, configuration.pollInterval),
      loop_(loop),
      configuration_(configuration),
      interfaceProvider_(interfaceProvider),
      metadataResolver_(metadataResolver),
      dateProvider_(std::move(dateProvider)),
      tasks_(loop) {}

void WiFiMonitor::stopMonitoring() {
    PolledMonitor::stopMonitoring();
    cancelMetadataRefresh();
}

void WiFiMonitor::refreshNow() {
    shouldForceMetadataRefresh_ = true;
    PolledMonitor::refreshNow();
}

void WiFiMonitor::resetTransientState() {
    cancelMetadataRefresh();
    isConnected.set(false);
    latestSnapshot.set(std::nullopt);
    latestIdentity.set(std::nullopt);
    latestSessionIdentity_.reset();
    history.set({});
    cachedMetadata_.reset();
    shouldForceMetadataRefresh_ = false;
    metadataRefreshInterfaceName_.reset();
}

Task<void> WiFiMonitor::poll() {
    const auto reading = interfaceProvider_.currentSnapshot();
    if (reading && isAssociated(*reading))
        record(*reading);
    else
        resetTransientState();
    co_return;
}

void WiFiMonitor::record(const WiFiInterfaceSnapshot& reading) {
    const WiFiSnapshot snapshot = snapshotOf(reading);
    const NetworkIdentity identity = identityOf(snapshot);
    isConnected.set(true);
    latestSnapshot.set(snapshot);
    // Whoever hears of a new identity may reset this monitor before the next line.
    latestIdentity.set(identity);
    if (latestSessionIdentity_ != identity) {
        history.set({});
        latestSessionIdentity_ = identity;
    }
    appendSample(history, snapshot, configuration_.maxHistorySampleCount);
    if (isMetadataRefreshDue(reading.interfaceName))
        startMetadataRefresh(identity);
}

WiFiSnapshot WiFiMonitor::snapshotOf(const WiFiInterfaceSnapshot& reading) const {
    WiFiSnapshot snapshot = linkSnapshot(reading, dateProvider_());
    if (cachedMetadata_ && cachedMetadata_->interfaceName == reading.interfaceName) {
        snapshot.ipAddress = cachedMetadata_->ipAddress;
        snapshot.isVPNActive = cachedMetadata_->isVPNActive;
    }
    return snapshot;
}

bool WiFiMonitor::isMetadataRefreshDue(const std::string& interfaceName) const {
    if (shouldForceMetadataRefresh_ || !cachedMetadata_ || cachedMetadata_->interfaceName != interfaceName)
        return true;
    return Seconds(loop_.now() - cachedMetadata_->refreshedAt).count() > configuration_.metadataRefreshInterval;
}

void WiFiMonitor::startMetadataRefresh(const NetworkIdentity& identity) {
    // A forced refresh that finds one under way stays asked for, and comes with the first poll after its end.
    if (metadataRefreshTask_ && metadataRefreshInterfaceName_ == identity.interfaceName)
        return;
    cancelMetadataRefresh();
    metadataRefreshInterfaceName_ = identity.interfaceName;
    shouldForceMetadataRefresh_ = false;
    metadataRefreshTask_ = tasks_.start(refreshMetadata(identity));
}

void WiFiMonitor::cancelMetadataRefresh() {
    if (const auto task = std::exchange(metadataRefreshTask_, std::nullopt))
        task->cancel();
}

// A cancelled refresh goes on to its end with the empty results of its cancelled tools.
Task<void> WiFiMonitor::refreshMetadata(NetworkIdentity identity) {
    auto [ipAddress, isVPNActive] =
        co_await whenAll(metadataResolver_.resolveIPAddress(identity.interfaceName), metadataResolver_.isVPNActive());
    metadataRefreshTask_.reset();
    metadataRefreshInterfaceName_.reset();
    cachedMetadata_ = Metadata{identity.interfaceName, std::move(ipAddress), isVPNActive, loop_.now()};
    publishMetadata(identity);
}

void WiFiMonitor::publishMetadata(const NetworkIdentity& refreshedIdentity) {
    if (!latestSnapshot.value() || !isSameAttachment(*latestSnapshot.value(), refreshedIdentity))
        return;
    WiFiSnapshot snapshot = *latestSnapshot.value();
    snapshot.ipAddress = cachedMetadata_->ipAddress;
    snapshot.isVPNActive = cachedMetadata_->isVPNActive;
    const NetworkIdentity identity = identityOf(snapshot);
    latestSnapshot.set(std::move(snapshot));
    latestIdentity.set(identity);
    // An address that arrives after the reading doesn't begin a new session, so the history stays.
    latestSessionIdentity_ = identity;
}

} // namespace tolvo
