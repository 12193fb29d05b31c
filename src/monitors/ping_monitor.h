#pragma once

#include "core/async/published.h"
#include "core/model/ping_result.h"
#include "core/model/wall_time.h"
#include "monitors/polled_monitor.h"
#include "probes/ping_probe_running.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// Measures both halves of the path: the hop to the router, which is found again on every poll, and the way out to an
/// internet target. A router that keeps silent while the internet answers is marked, since its silence then says
/// nothing about the network. Main thread only.
class PingMonitor final : public PolledMonitor {
public:
    struct Configuration {
        /// Seconds from the end of a poll to the start of the next.
        double pollInterval = 2.0;
        std::string internetTarget = "1.1.1.1";
        std::size_t maxHistorySampleCount = 60;
        /// Seconds, for the search of the router and for each reply.
        double commandTimeout = 1.5;
        /// Polls in a row before the router is ignored.
        std::int64_t routerIgnoreFailureThreshold = 3;
    };

    PingMonitor(MainLoop& loop, Configuration configuration, PingProbeRunning& pingProbeRunner, SleepProviding& sleeper,
                DateProvider dateProvider);

    void resetTransientState() override;

    /// The trimmed target counts from the next poll on. A blank one is dropped.
    void updateInternetTarget(std::string_view target);

    const std::string& internetTarget() const { return configuration_.internetTarget; }

    /// What the latest poll found.
    Published<std::optional<std::string>> routerIPAddress;
    /// Absent when the latest poll found no router.
    Published<std::optional<PingResult>> routerResult;
    Published<std::optional<PingResult>> internetResult;
    /// Oldest first. Polls without a router leave the router's alone.
    Published<std::vector<PingResult>> routerHistory;
    Published<std::vector<PingResult>> internetHistory;
    /// Whether the router's failures are not to be counted as a fault.
    Published<bool> isRouterIgnored;

private:
    Task<void> poll() override;
    Task<void> pollWithoutRouter(WallTime now);
    Task<void> pollWithRouter(WallTime now, std::string router);
    void applyRouterIgnoreRule(bool didRouterSucceed, bool didInternetSucceed);
    void countRouterAgain();

    Configuration configuration_;
    PingProbeRunning& pingProbeRunner_;
    DateProvider dateProvider_;
    std::int64_t consecutiveRouterFailuresWhileInternetSucceeds_ = 0;
};

} // namespace tolvo
