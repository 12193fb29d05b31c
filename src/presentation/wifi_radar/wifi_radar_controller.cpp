#include "presentation/wifi_radar/wifi_radar_controller.h"

#include <utility>

namespace tolvo {

WiFiRadarController::WiFiRadarController(MainLoop& loop, WiFiRadarSources sources, Actions actions)
    : loop_(loop),
      sources_(sources),
      actions_(std::move(actions)),
      sweepStart_(loop.now()),
      live_(loop, [this] { return wifiRadarContent(sources_); }),
      subscriptions_(subscribeToAll(sources_, [this] { live_.scheduleUpdate(); })) {}

void WiFiRadarController::open(ContentDisplaying<WiFiRadarContent>& display) {
    if (std::exchange(isOpen_, true))
        return;
    sweepStart_ = loop_.now();
    actions_.start();
    live_.setDisplay(&display);
}

void WiFiRadarController::close() {
    if (!std::exchange(isOpen_, false))
        return;
    live_.setDisplay(nullptr);
    actions_.stop();
}

double WiFiRadarController::sweepDegrees() const {
    return radarSweepDegrees(Seconds(loop_.now() - sweepStart_).count());
}

} // namespace tolvo
