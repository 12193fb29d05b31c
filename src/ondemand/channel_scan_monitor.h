#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/channel_scan_result.h"
#include "core/model/wall_time.h"
#include "core/model/wifi_snapshot.h"
#include "core/sleep_providing.h"
#include "ondemand/channel_scan_aggregation.h"
#include "probes/wifi_network_scanning.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

struct ChannelScanConfiguration {
    /// Scans in one run.
    std::int64_t passCount = 3;
    /// Seconds, after every pass but the last.
    double pauseBetweenPasses = 0.35;

    bool operator==(const ChannelScanConfiguration&) const = default;
};

/// Finds the least crowded channel of the band in use, when asked. Main thread only.
class ChannelScanMonitor final {
public:
    using CurrentWiFiSnapshotProvider = std::function<std::optional<WiFiSnapshot>()>;

    ChannelScanMonitor(MainLoop& loop, ChannelScanConfiguration configuration, WiFiNetworkScanning& scanner,
                       CurrentWiFiSnapshotProvider currentWiFiSnapshotProvider, SleepProviding& sleeper,
                       DateProvider dateProvider);

    /// Of the last run that finished; later starts, cancellations and failures leave it.
    Published<std::optional<ChannelScanResult>> latestResult;
    Published<bool> isScanning{false};
    Published<std::int64_t> completedPasses{0};
    Published<std::int64_t> totalPasses{0};
    /// In words for a person; cleared at each start.
    Published<std::optional<std::string>> lastErrorMessage;

    /// Does nothing while a run is going. At the end of a run isScanning goes false last, so that whoever hears it may
    /// start again at once.
    void startScan();
    /// The run ends at its next wait, with a message.
    void cancelScan();
    /// What the one button of a window does.
    void toggleScan();

private:
    using Passes = std::expected<std::vector<ChannelScanPass>, WiFiNetworkScannerError>;

    Task<void> run();
    Task<Passes> collectPasses();
    void finish(const std::vector<ChannelScanPass>& passes);
    void end();

    const ChannelScanConfiguration configuration_;
    WiFiNetworkScanning& scanner_;
    const CurrentWiFiSnapshotProvider currentWiFiSnapshotProvider_;
    SleepProviding& sleeper_;
    const DateProvider dateProvider_;
    std::optional<TaskHandle> runningTask_;
    TaskScope tasks_;
};

} // namespace tolvo
