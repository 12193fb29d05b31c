#include "presentation/terminal/monitor_page.h"

#include <utility>

namespace tolvo {

MonitorPage::MonitorPage(DashboardSources sources, Published<bool>& isBatteryFriendly, MonitorPageActions actions,
                         TerminalGlyphs glyphs, NumberFormat format, bool isAirSimulated)
    : sources_(std::move(sources)),
      isBatteryFriendly_(isBatteryFriendly),
      actions_(std::move(actions)),
      glyphs_(glyphs),
      format_(std::move(format)),
      isAirSimulated_(isAirSimulated) {
    subscriptions_ = subscribeToAll(sources_, [this] { changed(); });
    subscriptions_.push_back(isBatteryFriendly_.subscribe([this](bool) { changed(); }));
}

std::vector<TerminalLine> MonitorPage::lines(TerminalSize size) const {
    return monitorScreen(sources_, {isBatteryFriendly_.value(), isAirSimulated_}, size, glyphs_, format_);
}

void MonitorPage::handleKey(const std::string& key) {
    if (key == "m")
        actions_.setMonitoringEnabled(!sources_.isMonitoringEnabled.value());
    else if (key == "b")
        actions_.setBatteryFriendly(!isBatteryFriendly_.value());
}

} // namespace tolvo
