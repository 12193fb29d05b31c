#include "monitors/url_session_captive_portal_probe_fetcher.h"

#include <utility>

namespace tolvo {

namespace {

/// A portal turns new connections to itself; one that was there before it may go on. In TLS no portal can speak for the
/// server, so all that is left to see there is whether the server answers, and a kept connection shows that at a tenth
/// of a handshake's cost to either side.
ConnectionUse connectionUse(const URL& url) {
    return url.scheme() == "https" ? ConnectionUse::Own : ConnectionUse::Fresh;
}

} // namespace

Task<CaptivePortalProbeOutcome> URLSessionCaptivePortalProbeFetcher::fetch(URLRequest request) {
    // A portal may send anything, also for ever.
    request.totalTimeout = request.timeout;
    request.connectionUse = connectionUse(request.url);
    URLSessionOutcome outcome = co_await session_.data(std::move(request));
    if (outcome)
        co_return std::move(*outcome);
    if (outcome.error().kind == URLSessionError::Kind::NotHTTP)
        co_return std::unexpected(CaptivePortalProbeFetcherError::NonHTTPResponse);
    co_return std::unexpected(std::move(outcome.error()));
}

} // namespace tolvo
