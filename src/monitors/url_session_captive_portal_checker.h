#pragma once

#include "monitors/captive_portal_checking.h"
#include "monitors/captive_portal_probe_endpoint.h"
#include "monitors/captive_portal_probe_fetching.h"

#include <vector>

namespace tolvo {

/// Probes the endpoints one after the other. The first that shows a portal decides; any other HTTP answer outweighs all
/// transport failures, and the check fails only when every probe does.
class URLSessionCaptivePortalChecker final : public CaptivePortalChecking {
public:
    explicit URLSessionCaptivePortalChecker(
        CaptivePortalProbeFetching& probeFetcher,
        std::vector<CaptivePortalProbeEndpoint> probeEndpoints = defaultCaptivePortalProbeEndpoints());

    Task<CaptivePortalDetectionMeasurement> check(double timeout) override;

private:
    CaptivePortalProbeFetching& probeFetcher_;
    const std::vector<CaptivePortalProbeEndpoint> probeEndpoints_;
};

} // namespace tolvo
