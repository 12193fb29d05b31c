#include "core/task_sleeper.h"
#include "monitors/captive_portal_monitor.h"
#include "monitors/url_session_captive_portal_checker.h"
#include "monitors/url_session_captive_portal_probe_fetcher.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_session.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

using Reason = CaptivePortalDetectionReason;
constexpr auto response = ScriptedURLSession::response;

const URLSessionOutcome lost = ScriptedURLSession::failure(URLSessionError::Kind::ConnectionLost);
const URLSessionOutcome clean = response(200, "<TITLE>SUCCESS</TITLE>", {});

class CaptivePortalTest : public ::testing::Test {
protected:
    CaptivePortalTest() {
        session.answerTo = [this](std::size_t, const URLRequest& request) {
            return ScriptedURLSession::Answer{request.url == endpoints[0].url ? first : second};
        };
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
    ASSERT_EQ(endpoints.size(), 2U);
    const auto url = [&](std::size_t index) { return endpoints[index].url; };
    const CaptivePortalDetectionMeasurement clear{false, {}, {}, Reason::None, true};
    const auto redirect = [&](std::size_t by, std::optional<URL> to) {
        return CaptivePortalDetectionMeasurement{true, to, url(by), Reason::Redirect, true};
    };
    const auto injection = [&](std::size_t by) {
        return CaptivePortalDetectionMeasurement{true, url(by), url(by), Reason::ContentInjection, true};
    };
    const auto notHTTP = ScriptedURLSession::failure(URLSessionError::Kind::NotHTTP);
    struct {
        const char* name;
        URLSessionOutcome first, second;
        CaptivePortalDetectionMeasurement verdict;
        std::size_t probeCount;
    } const cases[] = {
        {"clean", clean, clean, clear, 2},
        {"login page", response(302, "", "https://a.test/login?x=1"), clean,
         redirect(0, URL::parse("https://a.test/login?x=1")), 1},
        {"no location", response(304, "Success", {}), clean, redirect(0, {}), 1},
        {"relative location", response(399, "", "/login"), clean, redirect(0, URL::parse("/login")), 1},
        {"broken location", response(300, "", "http://[a"), clean, redirect(0, {}), 1},
        {"just below and above", response(299, "", "/a"), response(400, "", "/a"), clear, 2},
        {"another page", response(200, "Sign in", {}), clean, injection(0), 1},
        {"empty page", response(200, "", {}), clean, injection(0), 1},
        {"no text", response(200, "Success\xFF", {}), clean, injection(0), 1},
        {"accents", response(200, "\xC3\xA9t\xC3\xA9 sUCCESs", {}), clean, clear, 2},
        {"page that isn't 200", response(203, "Sign in", {}), response(511, "Sign in", {}), clear, 2},
        {"second decides", clean, response(302, "", "/b"), redirect(1, URL::parse("/b")), 2},
        {"second decides after a failure", lost, response(200, "no", {}), injection(1), 2},
        {"first failing", lost, clean, clear, 2},
        {"second failing", response(503, "", {}), notHTTP, clear, 2},
        {"both failing", notHTTP, lost, {}, 2},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        first = testCase.first;
        second = testCase.second;
        session.requests.clear();
        EXPECT_EQ(runTask(loop, checker.check(3.5)), testCase.verdict);
        EXPECT_EQ(session.requests.size(), testCase.probeCount);
    }
    URLSessionCaptivePortalChecker idle(fetcher, {});
    EXPECT_EQ(runTask(loop, idle.check(3.5)), CaptivePortalDetectionMeasurement{});
}

TEST_F(CaptivePortalTest, ProbesSeeTheNetworkAndEndInTime) {
    for (const auto& [asked, given] : {std::pair{3.5, 3.5}, {0.05, 0.1}, {-1.0, 0.1}}) {
        session.requests.clear();
        runTask(loop, checker.check(asked));
        ASSERT_EQ(session.requests.size(), 2U);
        for (const URLRequest& request : session.requests) {
            EXPECT_EQ(request.timeout, given);
            EXPECT_EQ(request.totalTimeout, given) << "a trickle must end too";
            EXPECT_EQ(request.connectionUse, ConnectionUse::Fresh);
            EXPECT_EQ(request.headers,
                      (decltype(request.headers){{"Cache-Control", "no-cache"}, {"Pragma", "no-cache"}}));
        }
    }
}

TEST_F(CaptivePortalTest, VerdictHoldsUntilAnotherConclusion) {
    first = response(302, "", "http://a.test/");
    monitor.startMonitoring();
    loop.advance(1);
    const auto portal = monitor.latestStatus.value();
    EXPECT_EQ(portal, (CaptivePortalStatus{WallTime(std::chrono::seconds(1)), true, URL::parse("http://a.test/"),
                                           endpoints[0].url, Reason::Redirect}));
    EXPECT_TRUE(monitor.isCaptivePortal.value());

    first = second = lost;
    loop.advance(4);
    EXPECT_EQ(monitor.lastErrorMessage.value(), "Captive portal check failed.");
    EXPECT_EQ(monitor.latestStatus.value(), portal);
    EXPECT_EQ(monitor.portalURL.value(), portal->portalURL);
    EXPECT_EQ(monitor.history.value().size(), 1U);

    second = clean;
    loop.advance(4);
    EXPECT_FALSE(monitor.isCaptivePortal.value());
    EXPECT_EQ(monitor.portalURL.value(), std::nullopt);
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
    EXPECT_EQ(monitor.history.value().size(), 2U);

    first = second = lost;
    loop.advance(4);
    monitor.resetTransientState();
    EXPECT_EQ(monitor.latestStatus.value(), std::nullopt);
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
    EXPECT_TRUE(monitor.history.value().empty());
}

TEST_F(CaptivePortalTest, StopInTheMiddleOfACheckIsNoFailure) {
    monitor.startMonitoring();
    loop.advance(1.5);
    monitor.stopMonitoring();
    loop.advance(10);
    EXPECT_EQ(monitor.lastErrorMessage.value(), std::nullopt);
    EXPECT_EQ(monitor.latestStatus.value(), std::nullopt);
    EXPECT_EQ(session.requests.size(), 2U);
    EXPECT_EQ(loop.timerCount(), 0U);
}

TEST_F(CaptivePortalTest, HistoryKeepsTheLatestSixty) {
    monitor.startMonitoring();
    loop.advance(2 + 60 * 4);
    ASSERT_EQ(monitor.history.value().size(), 60U);
    EXPECT_EQ(monitor.history.value().front().timestamp, WallTime(std::chrono::seconds(6)));
}

} // namespace
} // namespace tolvo::testing
