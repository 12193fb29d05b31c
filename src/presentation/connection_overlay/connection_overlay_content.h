#pragma once

#include "core/model/connection_pressure_result.h"
#include "presentation/panel/overlay_header.h"
#include "presentation/rows/metric_rows.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvo {

inline constexpr OverlayHeader connectionOverlayHeader{"Connection Monitor", "TCP state pressure from netstat"};

/// What the connection monitor's overlay says at one moment.
struct ConnectionOverlayContent {
    std::string statusText;
    std::optional<Badge> quality;
    std::vector<MetricTrendRow> rows;

    bool operator==(const ConnectionOverlayContent&) const = default;
};

ConnectionOverlayContent connectionOverlayContent(const std::optional<ConnectionPressureResult>& latestResult,
                                                  std::span<const ConnectionPressureResult> history,
                                                  const std::optional<std::string>& lastErrorMessage);

} // namespace tolvo
