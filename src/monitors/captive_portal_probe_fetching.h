#pragma once

#include "core/async/task.h"
#include "platform/services/url_session.h"

#include <expected>
#include <variant>

namespace tolvo {

enum class CaptivePortalProbeFetcherError { NonHTTPResponse };

/// The transport's error as it came, or an answer that isn't HTTP.
using CaptivePortalProbeFailure = std::variant<URLSessionError, CaptivePortalProbeFetcherError>;
using CaptivePortalProbeOutcome = std::expected<HTTPResponse, CaptivePortalProbeFailure>;

/// Fetches one probe page, redirects not followed.
class CaptivePortalProbeFetching {
public:
    CaptivePortalProbeFetching(const CaptivePortalProbeFetching&) = delete;
    CaptivePortalProbeFetching& operator=(const CaptivePortalProbeFetching&) = delete;
    virtual ~CaptivePortalProbeFetching() = default;

    /// The request's time-out holds for the whole of it. A cancelled fetch throws CancellationError.
    virtual Task<CaptivePortalProbeOutcome> fetch(URLRequest request) = 0;

protected:
    CaptivePortalProbeFetching() = default;
};

} // namespace tolvo
