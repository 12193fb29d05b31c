#include "core/text.h"
#include "fuzz/require.h"
#include "monitors/url_session_captive_portal_checker.h"
#include "monitors/url_session_captive_portal_probe_fetcher.h"
#include "platform/linux/response_collector.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_session.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <vector>

namespace {

using namespace tolvo;
using fuzzing::require;

std::string_view takeUpTo(std::string_view& text, char end) {
    const std::string_view piece = text.substr(0, std::min(text.find(end), text.size() - 1) + 1);
    text.remove_prefix(piece.size());
    return piece;
}

/// An answer as it comes over the wire, a status line first; a failed transfer where there is none.
URLSessionOutcome answerIn(std::string_view wire) {
    constexpr std::string_view begin = "HTTP/1.1 ";
    int status = 0;
    if (!wire.starts_with(begin) || wire.size() < begin.size() + 3 ||
        std::from_chars(wire.data() + begin.size(), wire.data() + begin.size() + 3, status).ec != std::errc())
        return testing::httpFailure(URLSessionError::Kind::NotHTTP);
    ResponseCollector collector(ResponseBody::Keep, 1000);
    while (!wire.empty() && !collector.hasWholeHead()) {
        if (!collector.addHeaderLine(takeUpTo(wire, '\n')))
            return testing::httpFailure(URLSessionError::Kind::NotHTTP);
    }
    while (!wire.empty() && collector.addBody(takeUpTo(wire, ' '))) {
    }
    HTTPResponse response = collector.takeResponse(status);
    require(response.body.size() <= 1000);
    return response;
}

bool isPortal(const URLSessionOutcome& answer) {
    if (!answer || answer->statusCode / 100 == 3)
        return answer.has_value();
    return answer->statusCode == 200 && (!isValidUTF8(answer->body) || !lowerCased(answer->body).contains("success"));
}

} // namespace

/// Up to a zero byte the answer to the first probe, behind it the answer to the second.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    std::vector<URLSessionOutcome> answers;
    for (int i = 0; i < 2; ++i) {
        std::string_view wire = rest.empty() ? rest : takeUpTo(rest, '\0');
        answers.push_back(answerIn(wire.substr(0, wire.find('\0'))));
    }
    testing::ScriptedURLSession session;
    session.answer = [&](std::size_t number, const URLRequest&) { return std::pair(answers.at(number - 1), 0.1); };
    URLSessionCaptivePortalProbeFetcher fetcher(session);
    URLSessionCaptivePortalChecker checker(fetcher);
    testing::ManualLoop loop;
    const auto found = testing::runTask(loop, checker.check(3.5), 10);
    require(found.has_value());
    const auto portal = std::ranges::find_if(answers, isPortal);
    require(found->isCaptivePortal == (portal != answers.end()));
    require(found->didSucceed == (found->isCaptivePortal || answers[0] || answers[1]));
    require(!found->isCaptivePortal ||
            session.requests.size() == static_cast<std::size_t>(portal - answers.begin()) + 1);
    require((found->reason == CaptivePortalDetectionReason::None) == !found->isCaptivePortal);
    for (const char c : found->portalURL ? found->portalURL->text() : "")
        require(c > ' ' && c < '\x7f' && c != '<' && c != '"');
    return 0;
}
