#pragma once

#include "core/model/url.h"

#include <string>
#include <vector>

namespace tolvo {

/// A small public page that is known not to change.
struct CaptivePortalProbeEndpoint {
    URL url;
    /// What an untouched page contains, in any case of letters.
    std::string expectedSuccessSubstring;

    bool operator==(const CaptivePortalProbeEndpoint&) const = default;
};

/// One page over HTTP, which a portal can redirect or replace, then one over HTTPS.
std::vector<CaptivePortalProbeEndpoint> defaultCaptivePortalProbeEndpoints();

} // namespace tolvo
