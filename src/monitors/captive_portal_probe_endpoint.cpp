#include "monitors/captive_portal_probe_endpoint.h"

#include <utility>

namespace tolvo {

namespace {

constexpr std::pair<const char*, const char*> publicPages[] = {
    {"http://captive.apple.com/hotspot-detect.html", "Success"},
    {"https://detectportal.firefox.com/success.txt", "success"},
};

} // namespace

std::vector<CaptivePortalProbeEndpoint> defaultCaptivePortalProbeEndpoints() {
    std::vector<CaptivePortalProbeEndpoint> endpoints;
    for (const auto& [text, expected] : publicPages) {
        if (auto url = URL::parse(text))
            endpoints.push_back({std::move(*url), expected});
    }
    return endpoints;
}

} // namespace tolvo
