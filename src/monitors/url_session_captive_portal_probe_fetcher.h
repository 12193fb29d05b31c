#pragma once

#include "monitors/captive_portal_probe_fetching.h"

namespace tolvo {

/// Fetches over a URL session. Nothing has to stop redirects here, since the session never follows one.
class URLSessionCaptivePortalProbeFetcher final : public CaptivePortalProbeFetching {
public:
    explicit URLSessionCaptivePortalProbeFetcher(URLSession& session) : session_(session) {}

    Task<CaptivePortalProbeOutcome> fetch(URLRequest request) override;

private:
    URLSession& session_;
};

} // namespace tolvo
