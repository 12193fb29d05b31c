#pragma once

#include "presentation/terminal/monitor_screen_content.h"
#include "presentation/terminal/terminal_page.h"

#include <functional>

namespace tolvo {

/// What the keys of the monitor's screen ask for.
struct MonitorPageActions {
    std::function<void(bool isEnabled)> setMonitoringEnabled;
    std::function<void(bool isBatteryFriendly)> setBatteryFriendly;
};

/// The page that the terminal program starts with: the link, latency, DNS and connections, live.
class MonitorPage final : public TerminalPage {
public:
    MonitorPage(DashboardSources sources, Published<bool>& isBatteryFriendly, MonitorPageActions actions,
                TerminalGlyphs glyphs, NumberFormat format, bool isAirSimulated);

    std::vector<TerminalLine> lines(TerminalSize size) const override;
    void handleKey(const std::string& key) override;

private:
    DashboardSources sources_;
    Published<bool>& isBatteryFriendly_;
    MonitorPageActions actions_;
    TerminalGlyphs glyphs_;
    NumberFormat format_;
    bool isAirSimulated_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
