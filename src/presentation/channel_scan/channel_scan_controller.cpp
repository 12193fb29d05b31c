#include "presentation/channel_scan/channel_scan_controller.h"

#include <utility>

namespace tolvo {

ChannelScanController::ChannelScanController(MainLoop& loop, ChannelScanSources sources,
                                             std::function<void()> toggleScan, const LocaleFormats& formats)
    : sources_(sources),
      toggleScan_(std::move(toggleScan)),
      formats_(formats),
      live_(loop, [this] { return content(); }),
      subscriptions_(subscribeToAll(sources_, [this] { live_.scheduleUpdate(); })) {}

ChannelScanContent ChannelScanController::content() const {
    return channelScanContent(sources_, NumberFormat{formats_.decimalSeparator()});
}

} // namespace tolvo
