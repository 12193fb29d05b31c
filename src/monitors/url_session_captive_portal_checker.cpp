#include "monitors/url_session_captive_portal_checker.h"

#include "core/text.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tolvo {

namespace {

constexpr double shortestTimeout = 0.1;

URLRequest probeRequest(const URL& url, double timeout) {
    return {.url = url,
            .headers = {{"Cache-Control", "no-cache"}, {"Pragma", "no-cache"}},
            .timeout = std::max(timeout, shortestTimeout)};
}

bool containsExpectedText(const HTTPResponse& response, const CaptivePortalProbeEndpoint& endpoint) {
    // Bytes that are no UTF-8 are no ASCII either: such a page has no text, and so not the expected one.
    const std::string text = isValidUTF8(response.body) ? lowerCased(response.body) : std::string();
    return text.find(lowerCased(endpoint.expectedSuccessSubstring)) != std::string::npos;
}

/// Portals write addresses by hand: what can't stand in a URL is percent-encoded, as browsers do.
std::optional<URL> urlWrittenByHand(std::string_view text) {
    constexpr std::string_view delimiters = ":/?#[]@!$&'()*+,;=%";
    constexpr std::string_view hexDigits = "0123456789ABCDEFabcdef";
    std::string encoded = percentEncoded(text, delimiters);
    for (auto sign = encoded.find('%'); sign != std::string::npos; sign = encoded.find('%', sign + 1)) {
        const std::string_view digits = std::string_view(encoded).substr(sign + 1, 2);
        if (digits.size() < 2 || digits.find_first_not_of(hexDigits) != std::string_view::npos)
            encoded.insert(sign + 1, "25");
    }
    return URL::parse(encoded);
}

std::optional<URL> portalURLIn(const HTTPResponse& response) {
    const auto location = response.header("location");
    return location ? urlWrittenByHand(*location) : std::nullopt;
}

/// The portal that this answer shows, if it shows one.
std::optional<CaptivePortalDetectionMeasurement> portalIn(const HTTPResponse& response,
                                                          const CaptivePortalProbeEndpoint& endpoint) {
    using Reason = CaptivePortalDetectionReason;
    if (response.statusCode >= 300 && response.statusCode <= 399)
        return CaptivePortalDetectionMeasurement{true, portalURLIn(response), endpoint.url, Reason::Redirect, true};
    if (response.statusCode == 200 && !containsExpectedText(response, endpoint))
        return CaptivePortalDetectionMeasurement{true, endpoint.url, endpoint.url, Reason::ContentInjection, true};
    return std::nullopt;
}

} // namespace

URLSessionCaptivePortalChecker::URLSessionCaptivePortalChecker(CaptivePortalProbeFetching& probeFetcher,
                                                               std::vector<CaptivePortalProbeEndpoint> probeEndpoints)
    : probeFetcher_(probeFetcher), probeEndpoints_(std::move(probeEndpoints)) {}

Task<CaptivePortalDetectionMeasurement> URLSessionCaptivePortalChecker::check(double timeout) {
    CaptivePortalDetectionMeasurement noPortal;
    for (const CaptivePortalProbeEndpoint& endpoint : probeEndpoints_) {
        const auto response = co_await probeFetcher_.fetch(probeRequest(endpoint.url, timeout));
        if (!response)
            continue;
        if (auto portal = portalIn(*response, endpoint))
            co_return std::move(*portal);
        noPortal.didSucceed = true;
    }
    co_return noPortal;
}

} // namespace tolvo
