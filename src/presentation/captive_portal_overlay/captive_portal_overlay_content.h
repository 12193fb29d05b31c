#pragma once

#include "core/model/captive_portal_status.h"
#include "platform/services/locale_formats.h"
#include "presentation/panel/overlay_header.h"
#include "presentation/rows/metric_rows.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvo {

inline constexpr OverlayHeader captivePortalOverlayHeader{
    "Captive Portal", "Checks known probe URLs for redirects and login-page injection."};

/// What the captive portal's overlay says at one moment.
struct CaptivePortalOverlayContent {
    std::string statusText;
    std::vector<MetricRow> rows;
    /// Its value may be long and stands on lines of its own.
    MetricRow portalURL;

    bool operator==(const CaptivePortalOverlayContent&) const = default;
};

CaptivePortalOverlayContent captivePortalOverlayContent(const std::optional<CaptivePortalStatus>& latestStatus,
                                                        const std::optional<std::string>& lastErrorMessage,
                                                        const LocaleFormats& formats);

} // namespace tolvo
