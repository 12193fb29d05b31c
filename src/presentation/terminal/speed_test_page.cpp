#include "presentation/terminal/speed_test_page.h"

#include "presentation/speed_test/speed_test_frame_content.h"
#include "presentation/terminal/terminal_text.h"

#include <utility>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

void appendProgress(Lines& lines, const SpeedTestContent& content, std::size_t columns, TerminalGlyphs glyphs) {
    lines.push_back(progressLine(content.progress, content.progressPercent, columns, glyphs));
    lines.push_back(clippedLine({{" " + content.statusLine, Tone::Secondary}}, columns));
    lines.emplace_back();
}

void appendInvitation(Lines& lines, const std::string& notice, std::size_t columns) {
    const ToolWindowFrameContent& frame = speedTestFrameContent.window;
    lines.push_back(clippedLine({{" " + std::string(frame.emptyTitle), Tone::Primary, true}}, columns));
    appendWrapped(lines, std::string(frame.emptyText), Tone::Primary, columns);
    appendWrapped(lines, notice, Tone::Secondary, columns);
}

void appendResults(Lines& lines, const SpeedTestContent& content, std::size_t columns) {
    for (const SpeedTestMetricTile& tile : content.throughput)
        lines.push_back(titleAndValueLine({tile.title, tile.value}, columns, tile.valueColor));
    lines.emplace_back();
    for (const SpeedTestMetricTile& tile : content.latency)
        lines.push_back(titleAndValueLine({tile.title, tile.value}, columns));
    lines.emplace_back();
    for (const SpeedTestGradeTile& tile : content.grades) {
        TerminalLine line = titleAndValueLine({tile.title + " grade", tile.grade}, columns, tile.gradeColor);
        line.push_back({"  " + tile.ratio, Tone::Secondary});
        lines.push_back(clippedLine(std::move(line), columns));
    }
    for (const SpeedTestInsightRow& row : content.insights)
        appendWrapped(lines, row.text, row.indicatorColor, columns);
    lines.push_back(clippedLine({{" " + content.lastTestedLine, Tone::Secondary}}, columns));
}

} // namespace

SpeedTestPage::SpeedTestPage(SpeedTestSources sources, SpeedTestActions actions, std::string notice,
                             TerminalGlyphs glyphs, NumberFormat format, ShortTimeFormat shortTime)
    : sources_(sources),
      actions_(std::move(actions)),
      notice_(std::move(notice)),
      glyphs_(glyphs),
      format_(std::move(format)),
      shortTime_(std::move(shortTime)),
      subscriptions_(subscribeToAll(sources_, [this] { changed(); })) {}

Lines SpeedTestPage::lines(TerminalSize size) const {
    const SpeedTestContent content = speedTestContent(sources_, format_, shortTime_);
    TerminalLine header{{" Speed Test", Tone::Primary, true}};
    if (content.statusBadge)
        header.push_back({"  " + content.statusBadge->text, content.statusBadge->tone, true});
    Lines lines{clippedLine(std::move(header), size.columns), {}};
    if (content.isRunning)
        appendProgress(lines, content, size.columns, glyphs_);
    else if (const auto& message = sources_.lastErrorMessage.value())
        appendWrapped(lines, terminalSafe(*message), Tone::Orange, size.columns);
    if (content.isEmpty)
        appendInvitation(lines, notice_, size.columns);
    else
        appendResults(lines, content, size.columns);
    return withKeyLine(std::move(lines), "Enter " + content.buttonLabel + "  Esc back", size);
}

void SpeedTestPage::handleKey(const std::string& key) {
    if (key != "enter" && key != "s")
        return;
    if (sources_.isRunning.value())
        actions_.cancelTest();
    else
        actions_.startTest();
}

} // namespace tolvo
