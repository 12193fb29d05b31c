#pragma once

#include "core/async/published.h"
#include "core/model/connection_pressure_result.h"
#include "core/model/signal_quality.h"
#include "core/model/wall_time.h"
#include "monitors/polled_monitor.h"
#include "probes/tcp_connection_counting.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Watches how many TCP sockets the machine holds and in which states, as the pressure on its network stack. A count
/// that fails sets the message and leaves the rest as it was. Main thread only.
class ConnectionMonitor final : public PolledMonitor {
public:
    struct Configuration {
        /// Seconds.
        double pollInterval = 2.0;
        std::size_t maxHistorySampleCount = 60;
        /// Seconds for one count.
        double commandTimeout = 1.5;
    };

    ConnectionMonitor(MainLoop& loop, Configuration configuration, TCPConnectionCounting& connectionCounter,
                      SleepProviding& sleeper, DateProvider dateProvider);

    Published<std::optional<ConnectionPressureResult>> latestResult;
    /// Successful readings only, oldest first.
    Published<std::vector<ConnectionPressureResult>> history;
    Published<SignalQuality> connectionQuality{SignalQuality::Poor};
    Published<std::optional<std::string>> lastErrorMessage;

    void resetTransientState() override;

private:
    Task<void> poll() override;

    const std::size_t maxHistorySampleCount_;
    const double commandTimeout_;
    TCPConnectionCounting& connectionCounter_;
    const DateProvider dateProvider_;
};

} // namespace tolvo
