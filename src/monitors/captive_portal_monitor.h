#pragma once

#include "core/async/published.h"
#include "core/model/captive_portal_status.h"
#include "monitors/captive_portal_checking.h"
#include "monitors/polled_monitor.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Looks for a captive portal again and again. A verdict holds until a later check says otherwise; a check without a
/// conclusion leaves it standing. Main thread only.
class CaptivePortalMonitor final : public PolledMonitor {
public:
    struct Configuration {
        double pollInterval = 2.0;
        std::size_t maxHistorySampleCount = 60;
        /// Seconds for each probe of a check.
        double commandTimeout = 3.5;
    };

    CaptivePortalMonitor(MainLoop& loop, Configuration configuration, CaptivePortalChecking& checker,
                         SleepProviding& sleeper, DateProvider dateProvider);

    void resetTransientState() override;

    Published<std::optional<CaptivePortalStatus>> latestStatus;
    /// Oldest first.
    Published<std::vector<CaptivePortalStatus>> history;
    Published<bool> isCaptivePortal;
    Published<std::optional<URL>> portalURL;
    /// Set while checks fail.
    Published<std::optional<std::string>> lastErrorMessage;

private:
    Task<void> poll() override;
    void publish(CaptivePortalStatus status);

    const Configuration configuration_;
    CaptivePortalChecking& checker_;
    const DateProvider dateProvider_;
};

} // namespace tolvo
