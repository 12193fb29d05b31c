#include "monitors/url_session_captive_portal_probe_fetcher.h"

#include <utility>

namespace tolvo {

namespace {

/// A portal turns new connections to itself; one that was there before it may go on. Over TLS it can answer in the
/// server's name only where the user trusts its authority, so what is left to see there is whether the server answers.
/// A kept connection shows that without a handshake.
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
