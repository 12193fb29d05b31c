#include "presentation/terminal/report_page.h"

#include "presentation/terminal/terminal_text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

void appendProgress(Lines& lines, const DiagnosticsExportContent::Progress& progress, std::size_t columns,
                    TerminalGlyphs glyphs) {
    lines.push_back(progressLine(progress.value, "", columns, glyphs));
    lines.push_back(clippedLine({{" " + progress.message, Tone::Secondary}}, columns));
    lines.emplace_back();
    for (const CollectionStageRow& stage : progress.stages) {
        const Tone tone = stage.isCompleted ? Tone::Green : Tone::Secondary;
        lines.push_back(clippedLine({{checkMark(stage.isCompleted, glyphs), tone}, {stage.title, tone}}, columns));
    }
}

void appendCard(Lines& lines, const DiagnosticsSharePreviewCard& card, std::size_t columns) {
    lines.push_back(clippedLine({{" " + terminalSafe(card.name), Tone::Primary, true},
                                 {"  " + card.healthCapsule.text, card.healthCapsule.tone, true}},
                                columns));
    lines.push_back(clippedLine({{" " + terminalSafe(card.subtitle), Tone::Secondary}}, columns));
    for (const DiagnosticsCardMetric& metric : card.metrics)
        lines.push_back(titleAndValueLine({metric.title, metric.value}, columns));
    lines.push_back(clippedLine({{" " + card.footer, Tone::Secondary}}, columns));
}

void appendChecklist(Lines& lines, std::size_t columns, TerminalGlyphs glyphs) {
    lines.emplace_back();
    lines.push_back(
        clippedLine({{" " + std::string(diagnostics_export::includedTitle), Tone::Primary, true}}, columns));
    for (const DiagnosticsIncludedRow& row : diagnostics_export::includedRows)
        lines.push_back(clippedLine({{checkMark(true, glyphs), Tone::Green}, {std::string(row.text)}}, columns));
}

/// Above the keys, where a low terminal shows it too.
void appendAtBottom(Lines& lines, const InlineMessageRow& message, TerminalSize size) {
    Lines wrapped = wrappedLines(terminalSafe(message.text), message.accentColor, size.columns);
    lines.resize(size.rows > wrapped.size() ? size.rows - 1 - wrapped.size() : 0);
    std::ranges::move(wrapped, std::back_inserter(lines));
}

} // namespace

ReportPage::ReportPage(DiagnosticsExportController& controller, DiagnosticsCollection& collection,
                       TerminalGlyphs glyphs)
    : controller_(controller), glyphs_(glyphs) {
    subscriptions_ = subscribeToEach([this] { changed(); }, collection.isCollectingReport,
                                     collection.collectionProgress, collection.collectionMessage,
                                     collection.completedStages, collection.collectedReport, controller.actionMessage);
}

Lines ReportPage::lines(TerminalSize size) const {
    const DiagnosticsExportContent content = controller_.content();
    Lines lines{clippedLine({{" " + std::string(diagnostics_export::title), Tone::Primary, true},
                             {"  " + std::string(diagnostics_export::subtitle), Tone::Secondary}},
                            size.columns)};
    if (content.progress)
        appendProgress(lines, *content.progress, size.columns, glyphs_);
    if (content.ready) {
        appendCard(lines, content.ready->card, size.columns);
        appendChecklist(lines, size.columns, glyphs_);
    }
    if (content.actionMessage)
        appendAtBottom(lines, *content.actionMessage, size);
    return withKeyLine(std::move(lines), content.ready ? "Enter Save  r Regenerate  Esc back" : "Esc back", size);
}

void ReportPage::handleKey(const std::string& key) {
    if (key == "enter")
        controller_.shareReport();
    else if (key == "r")
        controller_.collect();
}

} // namespace tolvo
