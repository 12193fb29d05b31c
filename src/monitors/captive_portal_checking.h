#pragma once

#include "core/async/task.h"
#include "core/model/captive_portal_status.h"

#include <optional>

namespace tolvo {

struct CaptivePortalDetectionMeasurement {
    bool isCaptivePortal = false;
    std::optional<URL> portalURL;
    std::optional<URL> probeURL;
    CaptivePortalDetectionReason reason = CaptivePortalDetectionReason::None;
    /// Whether the check reached a conclusion.
    bool didSucceed = false;

    bool operator==(const CaptivePortalDetectionMeasurement&) const = default;
};

/// Looks for a captive portal.
class CaptivePortalChecking {
public:
    CaptivePortalChecking(const CaptivePortalChecking&) = delete;
    CaptivePortalChecking& operator=(const CaptivePortalChecking&) = delete;
    virtual ~CaptivePortalChecking() = default;

    /// The time-out, in seconds, is each probe's. Never fails; a check without a conclusion has didSucceed false.
    virtual Task<CaptivePortalDetectionMeasurement> check(double timeout) = 0;

protected:
    CaptivePortalChecking() = default;
};

} // namespace tolvo
