#include "ondemand/wifi_radar_nearby_networks_controller.h"

#include "core/async/sleep.h"

#include <algorithm>
#include <utility>

namespace tolvo {

WiFiRadarNearbyNetworksController::WiFiRadarNearbyNetworksController(MainLoop& loop, WiFiNetworkScanning& scanner,
                                                                     double scanInterval)
    : scanner_(scanner), scanInterval_(std::max(scanInterval, 3.0)), tasks_(loop) {}

void WiFiRadarNearbyNetworksController::start() {
    if (!scanTask_)
        scanTask_ = tasks_.start(run());
}

void WiFiRadarNearbyNetworksController::stop() {
    if (const auto task = std::exchange(scanTask_, std::nullopt))
        task->cancel();
    isScanning.set(false);
}

Task<void> WiFiRadarNearbyNetworksController::run() {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    while (!stopToken.stop_requested()) {
        isScanning.set(true);
        // A task of its own, which a stop doesn't reach: an access point list that is under way is worth waiting for.
        const OneShot<ScanOutcome> result;
        tasks_.start(scan(result));
        publish(co_await result.take(OnCancellation::KeepWaiting));
        // After a stop, the flag and the handle belong to whatever was started since.
        if (stopToken.stop_requested())
            co_return;
        isScanning.set(false);
        co_await sleepFor(Seconds(scanInterval_));
    }
}

Task<void> WiFiRadarNearbyNetworksController::scan(OneShot<ScanOutcome> result) {
    try {
        result.set(co_await scanner_.scanNetworks());
    } catch (const CancellationError&) {
        result.set(std::nullopt);
    }
}

void WiFiRadarNearbyNetworksController::publish(const ScanOutcome& outcome) {
    if (!outcome)
        return;
    if (!*outcome) {
        lastErrorMessage.set("Nearby scan unavailable.");
        return;
    }
    nearbyNetworks.set(nearbyNetworksOf(**outcome));
    lastErrorMessage.set(std::nullopt);
}

} // namespace tolvo
