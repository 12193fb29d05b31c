#pragma once

#include "presentation/speed_test/speed_test_content.h"
#include "presentation/terminal/terminal_page.h"

namespace tolvo {

/// The speed test: what it will transfer, its progress, and what it found. Enter starts or cancels it; it goes on when
/// the page is left.
class SpeedTestPage final : public TerminalPage {
public:
    /// The notice says, before the first run, what will be moved and with whom. The page keeps the reason of a failure
    /// on show, since a terminal has no other place for it.
    SpeedTestPage(SpeedTestSources sources, SpeedTestActions actions, std::string notice, TerminalGlyphs glyphs,
                  NumberFormat format, ShortTimeFormat shortTime);

    std::vector<TerminalLine> lines(TerminalSize size) const override;
    void handleKey(const std::string& key) override;

private:
    SpeedTestSources sources_;
    SpeedTestActions actions_;
    std::string notice_;
    TerminalGlyphs glyphs_;
    NumberFormat format_;
    ShortTimeFormat shortTime_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
