#pragma once

#include "export/diagnostics_collection.h"
#include "presentation/diagnostics_export/diagnostics_share_preview_card.h"
#include "presentation/rows/metric_rows.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// A button that is only a symbol; the second symbol stands in where the first is not to be had.
struct DiagnosticsExportButton {
    std::string_view symbolName;
    std::string_view fallbackSymbolName;
    /// Tool tip and, for a screen reader, label.
    std::string_view toolTip;
};

struct DiagnosticsIncludedRow {
    std::string_view text;
};

namespace diagnostics_export {

inline constexpr std::string_view symbolName = "square.and.arrow.up.on.square";
inline constexpr std::string_view title = "Diagnostics Export";
inline constexpr std::string_view subtitle = "Create a complete diagnostics snapshot for export.";
inline constexpr std::string_view regenerateTitle = "Regenerate";
inline constexpr DiagnosticsExportButton regenerateButton{"arrow.clockwise", "",
                                                          "Collect metrics again and generate a new report"};
inline constexpr DiagnosticsExportButton copyButton{"square.on.square", "doc.on.doc", "Copy report"};
inline constexpr DiagnosticsExportButton shareButton{"square.and.arrow.up", "", "Share report"};
/// What assistive programs say of the progress bar and of the stages.
inline constexpr std::string_view progressLabel = "Progress";
inline constexpr std::string_view completedStageLabel = "Completed";
inline constexpr std::string_view pendingStageLabel = "Pending";
inline constexpr std::string_view completedStageSymbol = "checkmark.circle.fill";
inline constexpr std::string_view includedRowSymbol = "checkmark.seal.fill";
inline constexpr std::string_view previewTitle = "Share Preview";
inline constexpr std::string_view includedTitle = "Included";
inline constexpr std::string_view payloadTitle = "Export Payload (JSON)";
inline constexpr std::array<DiagnosticsIncludedRow, 4> includedRows{{
    {"Health state and timestamps"},
    {"Wi-Fi, ping, DNS, and channel scan"},
    {"Connection pressure and captive portal"},
    {"Latest speed test (when available)"},
}};

} // namespace diagnostics_export

struct CollectionStageRow {
    std::string title;
    bool isCompleted = false;

    bool operator==(const CollectionStageRow&) const = default;
};

/// What the export window shows: the progress of a collection, or the report that came of it.
struct DiagnosticsExportContent {
    struct Progress {
        std::string message;
        /// 0 to 1.
        double value = 0;
        std::vector<CollectionStageRow> stages;

        bool operator==(const Progress&) const = default;
    };
    struct Ready {
        DiagnosticsSharePreviewCard card;
        std::string payload;

        bool operator==(const Ready&) const = default;
    };

    /// Exactly one of the two. The Regenerate button is there with the report only, so that collections don't overlap.
    std::optional<Progress> progress;
    std::optional<Ready> ready;
    /// What became of the last copying or saving.
    std::optional<InlineMessageRow> actionMessage;

    bool operator==(const DiagnosticsExportContent&) const = default;
};

DiagnosticsExportContent diagnosticsExportContent(const DiagnosticsCollection& collection,
                                                  std::optional<InlineMessageRow> actionMessage,
                                                  const DateTimeFormat& formatDateTime);

} // namespace tolvo
