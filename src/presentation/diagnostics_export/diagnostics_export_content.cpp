#include "presentation/diagnostics_export/diagnostics_export_content.h"

#include <utility>

namespace tolvo {

namespace {

DiagnosticsExportContent::Progress progressOf(const DiagnosticsCollection& collection) {
    DiagnosticsExportContent::Progress progress{
        collection.collectionMessage.value(), collection.collectionProgress.value(), {}};
    for (const auto& [stage, title, progressOnEntry] : collectionStages)
        progress.stages.push_back({std::string(title), collection.completedStages.value().contains(stage)});
    return progress;
}

} // namespace

DiagnosticsExportContent diagnosticsExportContent(const DiagnosticsCollection& collection,
                                                  std::optional<InlineMessageRow> actionMessage,
                                                  const DateTimeFormat& formatDateTime) {
    const auto& report = collection.collectedReport.value();
    const auto& text = collection.collectedReportJSONString.value();
    DiagnosticsExportContent content;
    if (report && text && !collection.isCollectingReport.value())
        content.ready = {diagnosticsSharePreviewCard(*report, formatDateTime), *text};
    else
        content.progress = progressOf(collection);
    content.actionMessage = std::move(actionMessage);
    return content;
}

} // namespace tolvo
