#pragma once

#include "core/async/one_shot.h"
#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "ondemand/wifi_radar_nearby_networks.h"
#include "probes/wifi_network_scanning.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Scans the neighbourhood every few seconds while the radar is looked at. Main thread only.
class WiFiRadarNearbyNetworksController final {
public:
    /// The interval, in seconds from the end of a scan to the start of the next, is at least 3: scans disturb the link.
    WiFiRadarNearbyNetworksController(MainLoop& loop, WiFiNetworkScanning& scanner, double scanInterval);

    /// Stays as it is after a scan that failed.
    Published<std::vector<RadarNearbyNetwork>> nearbyNetworks;
    Published<bool> isScanning{false};
    /// Cleared by the next scan that succeeds.
    Published<std::optional<std::string>> lastErrorMessage;

    /// The first scan comes at once. Does nothing on a running controller.
    void start();
    /// A scan under way is not broken off: its networks still arrive, and are the last.
    void stop();

private:
    /// Nothing for a scan that was cancelled.
    using ScanOutcome = std::optional<WiFiScanOutcome>;

    Task<void> run();
    Task<void> scan(OneShot<ScanOutcome> result);
    void publish(const ScanOutcome& outcome);

    WiFiNetworkScanning& scanner_;
    const double scanInterval_;
    std::optional<TaskHandle> scanTask_;
    TaskScope tasks_;
};

} // namespace tolvo
