#pragma once

#include "presentation/terminal/terminal_page.h"
#include "presentation/wifi_radar/wifi_radar_content.h"

namespace tolvo {

/// The radar for walking around: one score, an advice, and who else is on the air. It reads and scans only while it is
/// open.
class WiFiRadarPage final : public TerminalPage {
public:
    struct Actions {
        std::function<void()> start;
        std::function<void()> stop;
    };

    WiFiRadarPage(WiFiRadarSources sources, Actions actions, TerminalGlyphs glyphs);

    void open() override { actions_.start(); }
    void close() override { actions_.stop(); }
    std::vector<TerminalLine> lines(TerminalSize size) const override;
    void handleKey(const std::string&) override {}

private:
    WiFiRadarSources sources_;
    Actions actions_;
    TerminalGlyphs glyphs_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
