#include "ondemand/wifi_radar_monitor.h"

#include "core/sample_history.h"
#include "probes/wifi_link.h"

#include <utility>

namespace tolvo {

WiFiRadarMonitor::WiFiRadarMonitor(MainLoop& loop, Configuration configuration,
                                   WiFiInterfaceProviding& interfaceProvider, SleepProviding& sleeper,
                                   DateProvider dateProvider)
    : configuration_(configuration),
      interfaceProvider_(interfaceProvider),
      dateProvider_(std::move(dateProvider)),
      pollingLoop_(loop, sleeper, configuration.pollInterval, [this] { return poll(); }) {}

void WiFiRadarMonitor::start() {
    pollingLoop_.start();
}

void WiFiRadarMonitor::stop() {
    pollingLoop_.stop();
}

Task<void> WiFiRadarMonitor::poll() {
    const auto reading = interfaceProvider_.currentSnapshot();
    if (!reading || !isAssociated(*reading)) {
        isConnected.set(false);
        latestSnapshot.set(std::nullopt);
        history.set({});
        co_return;
    }
    const WiFiSnapshot snapshot = linkSnapshot(*reading, dateProvider_());
    isConnected.set(true);
    latestSnapshot.set(snapshot);
    appendSample(history, snapshot, configuration_.maxHistorySampleCount);
}

} // namespace tolvo
