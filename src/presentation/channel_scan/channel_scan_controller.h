#pragma once

#include "platform/services/locale_formats.h"
#include "presentation/channel_scan/channel_scan_content.h"
#include "presentation/tool_window/live_content.h"

#include <functional>
#include <vector>

namespace tolvo {

/// Between the channel scan and its window. A scan goes on while the window is closed. Main thread only.
class ChannelScanController final {
public:
    ChannelScanController(MainLoop& loop, ChannelScanSources sources, std::function<void()> toggleScan,
                          const LocaleFormats& formats);

    void setDisplay(ContentDisplaying<ChannelScanContent>* display) { live_.setDisplay(display); }
    /// Cancels while a scan is running, and starts one otherwise.
    void pressButton() { toggleScan_(); }

private:
    ChannelScanContent content() const;

    ChannelScanSources sources_;
    std::function<void()> toggleScan_;
    const LocaleFormats& formats_;
    LiveContent<ChannelScanContent> live_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
