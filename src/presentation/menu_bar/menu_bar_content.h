#pragma once

#include "core/model/health_state.h"
#include "platform/services/screen_geometry.h"
#include "platform/services/tool_window.h"
#include "presentation/rows/tone.h"

#include <optional>
#include <string>

namespace tolvo {

/// What the status icon says: the brand icon with a badge at its lower right corner.
struct StatusIconContent {
    std::string badgeSymbolName;
    /// Primary stands for the colour of the desktop panel's own labels.
    Tone badgeColor = Tone::Primary;
    /// For the symbol that stands in for a missing brand icon.
    std::string accessibilityDescription;

    bool operator==(const StatusIconContent&) const = default;
};

inline constexpr std::string_view statusItemToolTip = "Tolvo";
inline constexpr ContentSize initialPopoverSize{400, 650};

StatusIconContent statusIconContent(HealthState state, bool isColorful);

ToolWindowDescription toolWindowDescription(ToolWindowKind kind);

/// The popover's new size for the height that its panel asks for; nothing when it is near enough to what it has.
std::optional<ContentSize> adjustedPopoverSize(ContentSize present, double preferredHeight);

} // namespace tolvo
