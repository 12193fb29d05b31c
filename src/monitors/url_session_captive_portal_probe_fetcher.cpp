#include "monitors/url_session_captive_portal_probe_fetcher.h"

#include <utility>

namespace tolvo {

Task<CaptivePortalProbeOutcome> URLSessionCaptivePortalProbeFetcher::fetch(URLRequest request) {
    // A portal may send anything, also for ever.
    request.totalTimeout = request.timeout;
    // A portal stops new connections; one that was there before it may go on.
    request.connectionUse = ConnectionUse::Fresh;
    URLSessionOutcome outcome = co_await session_.data(std::move(request));
    if (outcome)
        co_return std::move(*outcome);
    if (outcome.error().kind == URLSessionError::Kind::NotHTTP)
        co_return std::unexpected(CaptivePortalProbeFetcherError::NonHTTPResponse);
    co_return std::unexpected(std::move(outcome.error()));
}

} // namespace tolvo
