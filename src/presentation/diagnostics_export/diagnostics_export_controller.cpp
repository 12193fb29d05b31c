#include "presentation/diagnostics_export/diagnostics_export_controller.h"

#include <utility>

namespace tolvo {

DiagnosticsExportController::DiagnosticsExportController(MainLoop& loop, DiagnosticsCollection& collection,
                                                         Clipboard& clipboard, SaveDialog& saveDialog,
                                                         FileWriting& fileWriter, DateTimeFormat formatDateTime)
    : collection_(collection),
      clipboard_(clipboard),
      saveDialog_(saveDialog),
      fileWriter_(fileWriter),
      formatDateTime_(std::move(formatDateTime)),
      live_(loop, [this] { return content(); }),
      subscriptions_(subscribeToEach([this] { live_.scheduleUpdate(); }, actionMessage, collection.isCollectingReport,
                                     collection.collectionProgress, collection.collectionMessage,
                                     collection.completedStages, collection.collectedReport)),
      tasks_(loop) {}

DiagnosticsExportContent DiagnosticsExportController::content() const {
    return diagnosticsExportContent(collection_, actionMessage.value(), formatDateTime_);
}

void DiagnosticsExportController::open(ContentDisplaying<DiagnosticsExportContent>& display) {
    if (hasSeenReport_ || !collection_.collectedReport.value())
        collect();
    live_.setDisplay(&display);
}

void DiagnosticsExportController::close() {
    live_.setDisplay(nullptr);
    hasSeenReport_ = collection_.collectedReport.value() && !collection_.isCollectingReport.value();
}

void DiagnosticsExportController::collect() {
    if (collection_.isCollectingReport.value())
        return;
    actionMessage.set(std::nullopt);
    collection_.collect();
}

void DiagnosticsExportController::copyReport() {
    const auto& text = collection_.collectedReportJSONString.value();
    if (!text)
        return tellStillCollecting();
    if (clipboard_.setText(*text))
        actionMessage.set(InlineMessageRow{"Diagnostics report copied to clipboard.", Tone::Green});
    else
        actionMessage.set(InlineMessageRow{"Unable to copy diagnostics report.", Tone::Red});
}

void DiagnosticsExportController::shareReport() {
    const auto& text = collection_.collectedReportJSONString.value();
    if (!text)
        return tellStillCollecting();
    if (saveTask_ && !saveTask_->hasEnded())
        return;
    SaveDialogRequest request{"Save Diagnostics Report", collection_.fileName(), "json", "JSON"};
    saveTask_ = tasks_.start(save(std::move(request), *text));
}

Task<void> DiagnosticsExportController::save(SaveDialogRequest request, std::string text) {
    const auto path = co_await saveDialog_.runSaveDialog(std::move(request));
    if (!path)
        co_return;
    if (co_await fileWriter_.writeAtomically(*path, std::move(text)))
        actionMessage.set(
            InlineMessageRow{"Diagnostics report saved to " + path->filename().string() + ".", Tone::Green});
    else
        actionMessage.set(InlineMessageRow{"Failed to save diagnostics report.", Tone::Red});
}

void DiagnosticsExportController::tellStillCollecting() {
    actionMessage.set(InlineMessageRow{"Diagnostics report is still being collected.", Tone::Secondary});
}

} // namespace tolvo
