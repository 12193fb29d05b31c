#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "platform/services/clipboard.h"
#include "platform/services/file_writing.h"
#include "platform/services/save_dialog.h"
#include "presentation/diagnostics_export/diagnostics_export_content.h"
#include "presentation/tool_window/live_content.h"

#include <optional>
#include <vector>

namespace tolvo {

/// What the export window's buttons do, and what became of it. Main thread only.
class DiagnosticsExportController final {
public:
    DiagnosticsExportController(MainLoop& loop, DiagnosticsCollection& collection, Clipboard& clipboard,
                                SaveDialog& saveDialog, FileWriting& fileWriter, DateTimeFormat formatDateTime);

    Published<std::optional<InlineMessageRow>> actionMessage;

    DiagnosticsExportContent content() const;

    /// When the window comes on screen: shows the present content at once and keeps it up to date. Collects, unless a
    /// report was finished while the window was closed: that one is still to be seen.
    void open(ContentDisplaying<DiagnosticsExportContent>& display);
    /// A collection under way goes on.
    void close();

    /// Makes a new report in place of the last one. Does nothing while a collection is running.
    void collect();
    void copyReport();
    /// Asks where, and saves there. Does nothing while it is asking or saving.
    void shareReport();

private:
    Task<void> save(SaveDialogRequest request, std::string text);
    void tellStillCollecting();

    DiagnosticsCollection& collection_;
    Clipboard& clipboard_;
    SaveDialog& saveDialog_;
    FileWriting& fileWriter_;
    const DateTimeFormat formatDateTime_;
    LiveContent<DiagnosticsExportContent> live_;
    std::vector<Subscription> subscriptions_;
    bool hasSeenReport_ = false;
    std::optional<TaskHandle> saveTask_;
    TaskScope tasks_;
};

} // namespace tolvo
