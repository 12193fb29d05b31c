#pragma once

#include "core/model/wall_time.h"
#include "export/diagnostics_export_report.h"
#include "presentation/rows/tone.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvo {

/// A date and a time of day as the user's locale writes them, at medium length.
using DateTimeFormat = std::function<std::string(WallTime)>;

struct DiagnosticsCardMetric {
    std::string title;
    std::string value;

    bool operator==(const DiagnosticsCardMetric&) const = default;
};

/// A report at a glance.
struct DiagnosticsSharePreviewCard {
    std::string name;
    std::string subtitle;
    /// The health state, in a capsule whose colours are the card's own: warning is yellow here.
    Badge healthCapsule;
    std::vector<DiagnosticsCardMetric> metrics;
    std::string footer;

    bool operator==(const DiagnosticsSharePreviewCard&) const = default;
};

DiagnosticsSharePreviewCard diagnosticsSharePreviewCard(const DiagnosticsExportReport& report,
                                                        const DateTimeFormat& formatDateTime);

} // namespace tolvo
