#pragma once

#include "core/async/sleep.h"
#include "platform/services/url_session.h"

#include <functional>
#include <string>
#include <vector>

namespace tolvo::testing {

/// Answers each request as the test says, after the time that the test says, and keeps what it was asked.
class ScriptedURLSession final : public URLSession {
public:
    struct Answer {
        URLSessionOutcome outcome;
        double seconds = 1;
    };

    static URLSessionOutcome response(int statusCode, std::string body = {}, std::optional<std::string> location = {}) {
        HTTPResponse response;
        response.statusCode = statusCode;
        response.receivedBodyBytes = static_cast<std::int64_t>(body.size());
        response.body = std::move(body);
        if (location)
            response.headers.emplace_back("location", *location);
        return response;
    }
    static URLSessionOutcome failure(URLSessionError::Kind kind) {
        return std::unexpected(URLSessionError{kind, "it failed"});
    }

    Task<URLSessionOutcome> data(URLRequest request) override {
        requests.push_back(request);
        const Answer answer = answerTo(requests.size(), request);
        co_await sleepFor(Seconds(answer.seconds));
        ++endedCount;
        co_return answer.outcome;
    }

    /// Is given the number of the request, from 1, and the request.
    std::function<Answer(std::size_t, const URLRequest&)> answerTo;
    std::vector<URLRequest> requests;
    int endedCount = 0;
};

} // namespace tolvo::testing
