#include "presentation/terminal/channel_scan_page.h"

#include "presentation/terminal/terminal_text.h"

#include <iterator>
#include <utility>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

constexpr std::size_t titleColumns = 8;
constexpr std::size_t scoreColumns = 14;
constexpr std::size_t countColumns = 13;
constexpr std::size_t barColumns = 12;

TerminalLine cardLine(const ChannelScanSelectionCard& card, std::size_t columns) {
    std::string text;
    for (const std::string& line : card.lines)
        text += line + "  ";
    return titleAndValueLine({card.title, text}, columns, card.accentColor);
}

TerminalLine congestionLine(const ChannelScanCongestionRow& row, std::size_t columns, TerminalGlyphs glyphs) {
    TerminalLine line{{" " + paddedToColumns(row.title, titleColumns)},
                      {paddedToColumns(row.score, scoreColumns)},
                      {paddedToColumns(row.count, countColumns), Tone::Secondary},
                      {paddedToColumns(barText(row.barShare, barColumns, glyphs), barColumns + 1), row.barColor}};
    for (const ChannelScanMarkerTag& tag : row.tags)
        line.push_back({tag.text + " ", tag.accentColor});
    return clippedLine(std::move(line), columns);
}

void appendResult(Lines& lines, const ChannelScanContent& content, std::size_t columns, TerminalGlyphs glyphs) {
    lines.push_back(
        titleAndValueLine({"Networks Seen", content.networksSeen + " in " + content.passes + " passes"}, columns));
    lines.push_back(cardLine(content.current, columns));
    lines.push_back(cardLine(content.recommended, columns));
    std::ranges::move(wrappedLines(content.comparison, Tone::Primary, columns), std::back_inserter(lines));
    lines.emplace_back();
    for (const ChannelScanCongestionRow& row : content.rows)
        lines.push_back(congestionLine(row, columns, glyphs));
    if (content.rows.empty())
        lines.push_back(clippedLine({{" No channels available for the active band.", Tone::Secondary}}, columns));
}

} // namespace

ChannelScanPage::ChannelScanPage(ChannelScanSources sources, Published<std::optional<std::string>>& lastErrorMessage,
                                 Actions actions, TerminalGlyphs glyphs, NumberFormat format)
    : sources_(sources),
      lastErrorMessage_(lastErrorMessage),
      actions_(std::move(actions)),
      glyphs_(glyphs),
      format_(std::move(format)),
      subscriptions_(subscribeToAll(sources_, [this] { changed(); })) {
    subscriptions_.push_back(lastErrorMessage_.subscribe([this](const auto&) { changed(); }));
}

Lines ChannelScanPage::lines(TerminalSize size) const {
    const ChannelScanContent content = channelScanContent(sources_, format_);
    Lines lines{clippedLine({{" Channel Scan", Tone::Primary, true}}, size.columns), {}};
    if (content.isScanning) {
        const double share = static_cast<double>(content.completedPasses) / static_cast<double>(content.totalPasses);
        lines.push_back(
            progressLine(share, std::to_string(content.completedPasses) + " of " + std::to_string(content.totalPasses),
                         size.columns, glyphs_));
    } else if (const auto& message = lastErrorMessage_.value()) {
        std::ranges::move(wrappedLines(terminalSafe(*message), Tone::Orange, size.columns), std::back_inserter(lines));
    }
    if (content.hasResult) {
        appendResult(lines, content, size.columns, glyphs_);
    } else {
        std::ranges::move(wrappedLines("Run a scan to compare current channel quality against nearby options in the "
                                       "same band.",
                                       Tone::Secondary, size.columns),
                          std::back_inserter(lines));
    }
    return withKeyLine(std::move(lines), "Enter " + content.buttonLabel + "  Esc back", size);
}

void ChannelScanPage::handleKey(const std::string& key) {
    if (key == "enter" || key == "c")
        actions_.toggle();
}

} // namespace tolvo
