#include "presentation/terminal/channel_scan_page.h"

#include "presentation/channel_scan/channel_scan_frame_content.h"
#include "presentation/terminal/terminal_text.h"

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

constexpr std::size_t cardTitleColumns = 12;
constexpr std::size_t titleColumns = 7;
constexpr std::size_t scoreColumns = 12;
constexpr std::size_t countColumns = 13;
constexpr std::size_t tagColumns = 20;
constexpr std::size_t longestBarColumns = 12;

/// On a narrow screen the bars give way to the marks, all by the same length.
std::size_t barWidth(std::size_t columns) {
    constexpr std::size_t others = 2 + titleColumns + scoreColumns + countColumns + tagColumns;
    return columns > others ? std::min(columns - others, longestBarColumns) : 0;
}

TerminalLine cardLine(const ChannelScanSelectionCard& card, std::size_t columns) {
    TerminalLine line{{" " + paddedToColumns(card.title, cardTitleColumns), Tone::Secondary}};
    for (const std::string& text : card.lines)
        line.push_back({text + "  ", card.accentColor});
    return clippedLine(std::move(line), columns);
}

TerminalLine congestionLine(const ChannelScanCongestionRow& row, std::size_t columns, TerminalGlyphs glyphs) {
    const std::size_t width = barWidth(columns);
    TerminalLine line{{" " + paddedToColumns(row.title, titleColumns)},
                      {paddedToColumns(row.score, scoreColumns)},
                      {paddedToColumns(row.count, countColumns), Tone::Secondary},
                      {paddedToColumns(barText(row.barShare, width, glyphs), width + 1), row.barColor}};
    for (const ChannelScanMarkerTag& tag : row.tags)
        line.push_back({tag.text + " ", tag.accentColor});
    return clippedLine(std::move(line), columns);
}

void appendResult(Lines& lines, const ChannelScanContent& content, std::size_t columns, TerminalGlyphs glyphs) {
    lines.push_back(
        titleAndValueLine({"Networks Seen", content.networksSeen + " in " + content.passes + " passes"}, columns));
    lines.push_back(cardLine(content.current, columns));
    lines.push_back(cardLine(content.recommended, columns));
    appendWrapped(lines, content.comparison, Tone::Primary, columns);
    lines.push_back(
        clippedLine({{" Band Congestion", Tone::Primary, true}, {"  Lower is better.", Tone::Secondary}}, columns));
    for (const ChannelScanCongestionRow& row : content.rows)
        lines.push_back(congestionLine(row, columns, glyphs));
    if (content.rows.empty())
        lines.push_back(
            clippedLine({{" " + std::string(channelScanFrameContent.noChannels), Tone::Secondary}}, columns));
}

void appendInvitation(Lines& lines, std::size_t columns) {
    const ToolWindowFrameContent& frame = channelScanFrameContent.window;
    lines.push_back(clippedLine({{" " + std::string(frame.emptyTitle), Tone::Primary, true}}, columns));
    appendWrapped(lines, std::string(frame.emptyText), Tone::Secondary, columns);
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
        lines.push_back(progressLine(
            content.progress, std::to_string(content.completedPasses) + " of " + std::to_string(content.totalPasses),
            size.columns, glyphs_));
    } else if (const auto& message = lastErrorMessage_.value()) {
        appendWrapped(lines, terminalSafe(*message), Tone::Orange, size.columns);
    }
    if (content.hasResult)
        appendResult(lines, content, size.columns, glyphs_);
    else
        appendInvitation(lines, size.columns);
    return withKeyLine(std::move(lines), "Enter " + content.buttonLabel + "  Esc back", size);
}

void ChannelScanPage::handleKey(const std::string& key) {
    if (key == "enter" || key == "c")
        actions_.toggle();
}

} // namespace tolvo
