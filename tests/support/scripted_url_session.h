#pragma once

#include "core/async/sleep.h"
#include "platform/services/url_session.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvo::testing {

inline URLSessionOutcome httpResponse(int statusCode, std::string body = {}, const char* location = nullptr) {
    HTTPResponse response;
    response.statusCode = statusCode;
    response.receivedBodyBytes = static_cast<std::int64_t>(body.size());
    response.body = std::move(body);
    if (location)
        response.headers.emplace_back("location", location);
    return response;
}

inline URLSessionOutcome httpFailure(URLSessionError::Kind kind) {
    return std::unexpected(URLSessionError{kind, "it failed"});
}

/// Answers each request as the test says, after the seconds that the test says, and keeps what it was asked.
class ScriptedURLSession final : public URLSession {
public:
    Task<URLSessionOutcome> data(URLRequest request) override {
        requests.push_back(request);
        const auto [outcome, seconds] = answer(requests.size(), request);
        co_await sleepFor(Seconds(seconds));
        co_return outcome;
    }

    /// Is given the number of the request, from 1, and the request.
    std::function<std::pair<URLSessionOutcome, double>(std::size_t, const URLRequest&)> answer;
    std::vector<URLRequest> requests;
};

} // namespace tolvo::testing
