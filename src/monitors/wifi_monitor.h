#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/network_identity.h"
#include "core/model/wall_time.h"
#include "core/model/wifi_snapshot.h"
#include "monitors/polled_monitor.h"
#include "probes/wifi_interface_providing.h"
#include "probes/wifi_network_metadata_resolving.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Reads the Wi-Fi link on each poll. The address and the VPN state need slow tools, so they are refreshed beside the
/// polls and folded in when they are known: a poll never waits for them, and a first reading has neither.
/// Main thread only.
class WiFiMonitor final : public PolledMonitor {
public:
    struct Configuration {
        double pollInterval = 2.0;
        std::size_t maxHistorySampleCount = 60;
        /// Seconds from the end of a refresh after which the address and the VPN state count as stale.
        double metadataRefreshInterval = 10.0;
    };

    WiFiMonitor(MainLoop& loop, Configuration configuration, WiFiInterfaceProviding& interfaceProvider,
                WiFiNetworkMetadataResolving& metadataResolver, SleepProviding& sleeper, DateProvider dateProvider);

    /// A link is up. On each poll these four change in the order in which they stand.
    Published<bool> isConnected{false};
    Published<std::optional<WiFiSnapshot>> latestSnapshot;
    Published<std::optional<NetworkIdentity>> latestIdentity;
    /// Readings of the present session, that is of one identity, oldest first.
    Published<std::vector<WiFiSnapshot>> history;

    /// A stopped monitor is not a disconnected one: the last reading stays published, the address stays cached.
    void stopMonitoring() override;
    void refreshNow() override;
    void resetTransientState() override;

private:
    struct Metadata {
        std::string interfaceName;
        std::optional<std::string> ipAddress;
        bool isVPNActive = false;
        MonotonicTime refreshedAt;
    };

    Task<void> poll() override;
    void record(const WiFiInterfaceSnapshot& reading);
    WiFiSnapshot snapshotOf(const WiFiInterfaceSnapshot& reading) const;
    bool isMetadataRefreshDue(const std::string& interfaceName) const;
    void startMetadataRefresh(const NetworkIdentity& identity);
    void cancelMetadataRefresh();
    Task<void> refreshMetadata(NetworkIdentity identity);
    void publishMetadata(const NetworkIdentity& refreshedIdentity);

    MainLoop& loop_;
    const Configuration configuration_;
    WiFiInterfaceProviding& interfaceProvider_;
    WiFiNetworkMetadataResolving& metadataResolver_;
    const DateProvider dateProvider_;

    std::optional<Metadata> cachedMetadata_;
    bool shouldForceMetadataRefresh_ = false;
    std::optional<NetworkIdentity> latestSessionIdentity_;
    std::optional<TaskHandle> metadataRefreshTask_;
    std::optional<std::string> metadataRefreshInterfaceName_;

    TaskScope tasks_;
};

} // namespace tolvo
