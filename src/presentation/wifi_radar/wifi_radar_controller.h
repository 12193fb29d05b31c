#pragma once

#include "core/async/main_loop.h"
#include "presentation/tool_window/live_content.h"
#include "presentation/wifi_radar/wifi_radar_content.h"

#include <functional>
#include <vector>

namespace tolvo {

/// Runs the radar's readings and scans while its window is open, and keeps the window up to date. Main thread only.
class WiFiRadarController final {
public:
    /// For the radar's monitor and for its scans of the neighbourhood.
    struct Actions {
        std::function<void()> start;
        std::function<void()> stop;
    };

    WiFiRadarController(MainLoop& loop, WiFiRadarSources sources, Actions actions);

    /// Begins a new sweep and shows the present content at once.
    void open(ContentDisplaying<WiFiRadarContent>& display);
    /// Does nothing when it isn't open.
    void close();

    /// Where the sweep's wedge begins now, in degrees clockwise from the right.
    double sweepDegrees() const;

private:
    MainLoop& loop_;
    WiFiRadarSources sources_;
    Actions actions_;
    bool isOpen_ = false;
    MonotonicTime sweepStart_;
    LiveContent<WiFiRadarContent> live_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
