#pragma once

#include "presentation/channel_scan/channel_scan_content.h"
#include "presentation/terminal/terminal_page.h"

namespace tolvo {

/// The channel scan: how crowded each channel is, and which one would be better. Enter starts or cancels it.
class ChannelScanPage final : public TerminalPage {
public:
    struct Actions {
        std::function<void()> toggle;
    };

    /// The page shows the scan's own message as well, since a terminal has no other place for it.
    ChannelScanPage(ChannelScanSources sources, Published<std::optional<std::string>>& lastErrorMessage,
                    Actions actions, TerminalGlyphs glyphs, NumberFormat format);

    std::vector<TerminalLine> lines(TerminalSize size) const override;
    void handleKey(const std::string& key) override;

private:
    ChannelScanSources sources_;
    Published<std::optional<std::string>>& lastErrorMessage_;
    Actions actions_;
    TerminalGlyphs glyphs_;
    NumberFormat format_;
    std::vector<Subscription> subscriptions_;
};

} // namespace tolvo
