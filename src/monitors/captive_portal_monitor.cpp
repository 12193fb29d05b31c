#include "monitors/captive_portal_monitor.h"

#include "core/sample_history.h"

#include <utility>

namespace tolvo {

CaptivePortalMonitor::CaptivePortalMonitor(MainLoop& loop, Configuration configuration, CaptivePortalChecking& checker,
                                           SleepProviding& sleeper, DateProvider dateProvider)
    : PolledMonitor(loop, sleeper, configuration.pollInterval),
      configuration_(configuration),
      checker_(checker),
      dateProvider_(std::move(dateProvider)) {}

void CaptivePortalMonitor::resetTransientState() {
    latestStatus.set(std::nullopt);
    history.set({});
    isCaptivePortal.set(false);
    portalURL.set(std::nullopt);
    lastErrorMessage.set(std::nullopt);
}

Task<void> CaptivePortalMonitor::poll() {
    const auto measurement = co_await checker_.check(configuration_.commandTimeout);
    if (!measurement.didSucceed) {
        lastErrorMessage.set("Captive portal check failed.");
        co_return;
    }
    publish({dateProvider_(), measurement.isCaptivePortal, measurement.portalURL, measurement.probeURL,
             measurement.reason});
    lastErrorMessage.set(std::nullopt);
}

void CaptivePortalMonitor::publish(CaptivePortalStatus status) {
    latestStatus.set(status);
    isCaptivePortal.set(status.isCaptivePortal);
    portalURL.set(status.portalURL);
    appendSample(history, std::move(status), configuration_.maxHistorySampleCount);
}

} // namespace tolvo
