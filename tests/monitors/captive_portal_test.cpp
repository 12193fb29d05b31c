#include "core/task_sleeper.h"
#include "monitors/captive_portal_monitor.h"
#include "monitors/url_session_captive_portal_checker.h"
#include "monitors/url_session_captive_portal_probe_fetcher.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_session.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

const URLSessionOutcome lost = httpFailure(URLSessionError::Kind::ConnectionLost);
const URLSessionOutcome notHTTP = httpFailure(URLSessionError::Kind::NotHTTP);
const URLSessionOutcome clean = httpResponse(200, "<TITLE>SUCCESS</TITLE>");

class CaptivePortalTest : public ::testing::Test {
protected:
    CaptivePortalTest() {
        session.answer = [this](std::size_t, const URLRequest& request) {
            return std::pair(request.url == endpoints.at(0).url ? first : second, 1.0);
        };
    }
    /// "redirect 1 http://a.test/": the reason, which probe, and where to.
    std::string verdict(const CaptivePortalDetectionMeasurement& measurement) const {
        if (!measurement.isCaptivePortal)
            return measurement.didSucceed ? "clear" : "failed";
        return std::string(rawValue(measurement.reason)) +
               (measurement.probeURL == endpoints.at(0).url ? " 1 " : " 2 ") +
               (measurement.portalURL ? measurement.portalURL->text() : "nowhere");
    }

    ManualLoop loop;
    ScriptedURLSession session;
    URLSessionOutcome first = clean;
    URLSessionOutcome second = clean;
    const std::vector<CaptivePortalProbeEndpoint> endpoints = defaultCaptivePortalProbeEndpoints();
    URLSessionCaptivePortalProbeFetcher fetcher{session};
    URLSessionCaptivePortalChecker checker{fetcher};
    TaskSleeper sleeper;
    CaptivePortalMonitor monitor{
        loop, {}, checker, sleeper, [this] { return WallTime(loop.now().time_since_epoch()); }};
};

TEST_F(CaptivePortalTest, VerdictOfTwoProbes) {
    const std::string injected = "contentInjection 1 " + endpoints.at(0).url.text();
    struct {
        const char* name;
        URLSessionOutcome first, second;
        std::string verdict;
    } const cases[] = {
        {"clean", clean, clean, "clear"},
        {"login page", httpResponse(302, "", "https://a.test/in?x=1"), clean, "redirect 1 https://a.test/in?x=1"},
        {"no location", httpResponse(304, "Success"), clean, "redirect 1 nowhere"},
        {"relative location", httpResponse(399, "", "/in"), clean, "redirect 1 /in"},
        {"location by hand", httpResponse(302, "", "http://a.test/a b?x=%2F\xE9|&off=50%&y=%4"), clean,
         "redirect 1 http://a.test/a%20b?x=%2F%E9%7C&off=50%25&y=%254"},
        {"broken location", httpResponse(300, "", "http://[a"), clean, "redirect 1 nowhere"},
        {"just below and above", httpResponse(299, "", "/a"), httpResponse(400, "", "/a"), "clear"},
        {"another page", httpResponse(200, "Sign in"), clean, injected},
        {"no text", httpResponse(200, "Success\xFF"), clean, injected},
        {"accents", httpResponse(200, "\xC3\xA9t\xC3\xA9 sUCCESs"), clean, "clear"},
        {"page that isn't 200", httpResponse(203, "Sign in"), httpResponse(511, "Sign in"), "clear"},
        {"second decides", clean, httpResponse(302, "", "/b"), "redirect 2 /b"},
        {"first failing", lost, clean, "clear"},
        {"second failing", httpResponse(503), notHTTP, "clear"},
        {"both failing", notHTTP, lost, "failed"},
    };
    for (const auto& testCase : cases) {
        session.requests.clear();
        first = testCase.first;
        second = testCase.second;
        EXPECT_EQ(verdict(*runTask(loop, checker.check(3.5))), testCase.verdict) << testCase.name;
        EXPECT_EQ(session.requests.size(), testCase.verdict.find(" 1 ") == std::string::npos ? 2U : 1U);
    }
    EXPECT_EQ(verdict(*runTask(loop, URLSessionCaptivePortalChecker(fetcher, {}).check(3.5))), "failed");
}

TEST_F(CaptivePortalTest, ProbesSeeTheNetworkAndEndInTime) {
    for (const auto& [asked, given] : {std::pair{3.5, 3.5}, {0.05, 0.1}, {-1.0, 0.1}}) {
        runTask(loop, checker.check(asked));
        const URLRequest& request = session.requests.back();
        EXPECT_EQ(request.timeout, given);
        EXPECT_EQ(request.totalTimeout, given) << "a trickle must end too";
        EXPECT_EQ(session.requests.end()[-2].connectionUse, ConnectionUse::Fresh);
        EXPECT_EQ(request.connectionUse, ConnectionUse::Own) << "a handshake each time would cost more than all else";
        EXPECT_EQ(request.headers, (decltype(request.headers){{"Cache-Control", "no-cache"}, {"Pragma", "no-cache"}}));
    }
}

TEST_F(CaptivePortalTest, VerdictHoldsUntilAnotherConclusion) {
    first = httpResponse(302, "", "http://a.test/");
    monitor.startMonitoring();
    loop.advance(1);
    const auto portal = monitor.latestStatus.value();
    EXPECT_EQ(portal, (CaptivePortalStatus{WallTime(std::chrono::seconds(1)), true, URL::parse("http://a.test/"),
                                           endpoints.at(0).url, CaptivePortalDetectionReason::Redirect}));
    first = second = lost;
    loop.advance(4);
    EXPECT_EQ(monitor.lastErrorMessage.value(), "Captive portal check failed.");
    EXPECT_EQ(monitor.latestStatus.value(), portal);
    EXPECT_TRUE(monitor.isCaptivePortal.value());
    EXPECT_EQ(monitor.portalURL.value(), portal->portalURL);
    EXPECT_EQ(monitor.history.value().size(), 1U);
    second = clean;
    loop.advance(4 * 60);
    EXPECT_FALSE(monitor.isCaptivePortal.value());
    EXPECT_EQ(monitor.portalURL.value(), std::nullopt);
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
    EXPECT_EQ(monitor.history.value().size(), 60U);
    EXPECT_NE(monitor.history.value().front(), *portal);
    monitor.resetTransientState();
    EXPECT_EQ(monitor.latestStatus.value(), std::nullopt);
    EXPECT_TRUE(monitor.history.value().empty());
}

TEST_F(CaptivePortalTest, StopInTheMiddleOfACheckIsNoFailure) {
    monitor.startMonitoring();
    loop.advance(1.5);
    monitor.stopMonitoring();
    loop.advance(10);
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
    EXPECT_EQ(monitor.latestStatus.value(), std::nullopt);
    EXPECT_EQ(loop.timerCount(), 0U);
}

} // namespace
} // namespace tolvo::testing
