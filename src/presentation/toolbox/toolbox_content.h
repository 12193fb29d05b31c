#pragma once

#include "presentation/panel/overlay_header.h"

#include <span>
#include <string_view>

namespace tolvo {

enum class ToolboxAction {
    OpenWiFiRadar,
    OpenChannelScan,
    OpenSpeedTest,
    OpenConnectionMonitor,
    OpenCaptivePortal,
    OpenDiagnosticsExport
};

/// One tool of the list.
struct ToolboxToolRow {
    std::string_view symbolName;
    std::string_view title;
    std::string_view subtitle;
    ToolboxAction action;
};

inline constexpr OverlayHeader toolboxHeader{"Toolbox", "Advanced diagnostics"};
inline constexpr std::string_view toolboxSectionTitle = "Tools";

std::span<const ToolboxToolRow> toolboxRows();

} // namespace tolvo
