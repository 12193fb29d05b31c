#include "presentation/speed_test/speed_test_controller.h"

#include <utility>

namespace tolvo {

SpeedTestController::SpeedTestController(MainLoop& loop, SpeedTestSources sources, SpeedTestActions actions,
                                         std::string serverTag, std::string notice, const LocaleFormats& formats)
    : sources_(sources),
      actions_(std::move(actions)),
      serverTag_(std::move(serverTag)),
      notice_(std::move(notice)),
      formats_(formats),
      live_(loop, [this] { return content(); }),
      subscriptions_(subscribeToAll(sources_, [this] { live_.scheduleUpdate(); })) {}

void SpeedTestController::pressButton() {
    if (sources_.isRunning.value())
        actions_.cancelTest();
    else
        actions_.startTest();
}

SpeedTestContent SpeedTestController::content() const {
    return speedTestContent(sources_, NumberFormat{formats_.decimalSeparator()},
                            [this](WallTime time) { return formats_.shortTime(time); });
}

} // namespace tolvo
