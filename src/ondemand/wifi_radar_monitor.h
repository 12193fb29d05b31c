#pragma once

#include "core/async/published.h"
#include "core/interruptible_polling_loop.h"
#include "core/model/wall_time.h"
#include "core/model/wifi_snapshot.h"
#include "probes/wifi_interface_providing.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace tolvo {

/// Reads the Wi-Fi interface several times a second while the radar is looked at. It reads the interface and nothing
/// else, so its snapshots have no address and no VPN. Main thread only.
class WiFiRadarMonitor final {
public:
    struct Configuration {
        /// Seconds from one poll to the next; less than 0 counts as 0.
        double pollInterval = 0.25;
        /// At four polls a second, half a minute.
        std::size_t maxHistorySampleCount = 120;
    };

    WiFiRadarMonitor(MainLoop& loop, Configuration configuration, WiFiInterfaceProviding& interfaceProvider,
                     SleepProviding& sleeper, DateProvider dateProvider);

    Published<bool> isConnected{false};
    Published<std::optional<WiFiSnapshot>> latestSnapshot;
    /// Oldest first; empty without a link.
    Published<std::vector<WiFiSnapshot>> history;

    /// The first poll comes at once, and the history goes on. Does nothing on a running monitor.
    void start();
    void stop();

private:
    Task<void> poll();

    const Configuration configuration_;
    WiFiInterfaceProviding& interfaceProvider_;
    const DateProvider dateProvider_;
    InterruptiblePollingLoop pollingLoop_;
};

} // namespace tolvo
