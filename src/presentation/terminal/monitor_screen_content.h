#pragma once

#include "presentation/dashboard/dashboard_content.h"
#include "presentation/terminal/terminal_line.h"

#include <string>
#include <vector>

namespace tolvo {

/// What the monitor's screen shows beside the dashboard's content.
struct MonitorScreenExtras {
    bool isBatteryFriendly = false;
    /// Set when the readings are made up; the screen says so.
    bool isAirSimulated = false;
};

/// The terminal program's first screen: at most as many lines as fit, the most telling ones first when they don't.
std::vector<TerminalLine> monitorScreen(const DashboardSources& sources, const MonitorScreenExtras& extras,
                                        TerminalSize size, TerminalGlyphs glyphs, const NumberFormat& format);

} // namespace tolvo
