#pragma once

#include "core/model/raw_value.h"
#include "core/model/url.h"
#include "core/model/wall_time.h"

#include <optional>

namespace tolvo {

/// Why a probe decided what it decided.
enum class CaptivePortalDetectionReason { None, Redirect, ContentInjection };

template<>
inline constexpr RawValueTable<CaptivePortalDetectionReason, 3> rawValueTable<CaptivePortalDetectionReason>{{
    {CaptivePortalDetectionReason::None, "none"},
    {CaptivePortalDetectionReason::Redirect, "redirect"},
    {CaptivePortalDetectionReason::ContentInjection, "contentInjection"},
}};

/// One captive portal verdict.
struct CaptivePortalStatus {
    WallTime timestamp;
    bool isCaptivePortal = false;
    /// Where the redirect points, when known.
    std::optional<URL> portalURL;
    /// The probe that produced the verdict.
    std::optional<URL> probeURL;
    CaptivePortalDetectionReason reason = CaptivePortalDetectionReason::None;

    bool operator==(const CaptivePortalStatus&) const = default;
};

} // namespace tolvo
