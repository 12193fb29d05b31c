#include "core/task_sleeper.h"
#include "ondemand/cloudflare_speed_test_runner.h"
#include "ondemand/ping_probe_latency_prober.h"
#include "ondemand/speed_test_monitor.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_url_session.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

using Kind = URLSessionError::Kind;
using Phase = SpeedTestPhase;
using Grade = BufferbloatGrade;

/// Replies after a tenth of a second with the next latency, at the end always the last; a negative one is lost.
class ScriptedPing final : public PingProbeRunning {
public:
    Task<std::optional<std::string>> routerIPAddress(double) override { co_return std::nullopt; }
    Task<PingProbeMeasurement> ping(std::string host, double timeout) override {
        EXPECT_EQ(host + " " + std::to_string(timeout), "1.1.1.1 2.000000");
        const double latency = latencies[std::min(count++, latencies.size() - 1)];
        co_await sleepFor(Seconds(0.1));
        co_return PingProbeMeasurement{std::abs(latency), {}, 0, latency >= 0};
    }
    std::vector<double> latencies{10};
    std::size_t count = 0;
};

class SpeedTestTest : public ::testing::Test {
protected:
    SpeedTestTest() { answer(0, {}); }

    /// Four downloads, then four uploads, each a second later than the one before; but for the one of this number.
    void answer(std::size_t special, URLSessionOutcome outcome) {
        session.requests.clear();
        session.answer = [=](std::size_t number, const URLRequest& request) {
            auto usual = httpResponse(200);
            usual->receivedBodyBytes = request.method == HTTPMethod::Get ? 8'000'000 : 7;
            return number == special ? std::pair(outcome, 0.5)
                                     : std::pair(usual, static_cast<double>((number - 1) % 4 + 1));
        };
    }
    static Task<void> silent(double) { co_return; }

    ManualLoop loop;
    ScriptedURLSession session;
    CloudflareSpeedTestRunner runner{loop, session, speedTestEndpoint(URL::parse("https://speed.test/"))};
    ScriptedPing ping;
    PingProbeLatencyProber prober{ping};
    TaskSleeper sleeper;
    SpeedTestMonitor monitor{loop,   {},      runner,
                             prober, sleeper, [this] { return WallTime(loop.now().time_since_epoch()); }};
};

TEST_F(SpeedTestTest, TransferMeasuresPayloadOverTime) {
    EXPECT_EQ(**runTask(loop, runner.measureDownload({}, silent)), (SpeedTestTransfer{32'000'000, 64, 4}));
    EXPECT_EQ(**runTask(loop, runner.measureUpload({}, silent)), (SpeedTestTransfer{12'000'000, 24, 4}));
    ASSERT_EQ(session.requests.size(), 8U);
    EXPECT_EQ(session.requests[3].url.text(), "https://speed.test/__down?bytes=8000000");
    const URLRequest& post = session.requests[4];
    EXPECT_EQ(post.url.text(), "https://speed.test/__up");
    EXPECT_EQ(post.bodyLength, 3'000'000);
    EXPECT_EQ(post.body->find_first_not_of('\xA5'), std::string::npos);
    EXPECT_EQ(post.body, session.requests[7].body) << "one body serves all";
    EXPECT_EQ(post.headers, (decltype(post.headers){{"Content-Type", "application/octet-stream"}}));
    for (const URLRequest& request : session.requests) {
        EXPECT_EQ(request.timeout, 10.0);
        EXPECT_EQ(request.totalTimeout, 3600) << "a slow link may take its time, a trickle has an end";
        EXPECT_EQ(request.connectionUse, ConnectionUse::Own);
        EXPECT_EQ(request.responseBody, ResponseBody::Count);
    }
    EXPECT_FALSE(speedTestEndpoint(URL::parse("/relative")).uploadURL);
    EXPECT_FALSE(speedTestEndpoint(URL::parse("https://a.test/?x")).downloadURLFactory(1));
    session.answer = [](std::size_t, const URLRequest&) { return std::pair(httpResponse(200, "1234567890"), 0.0); };
    EXPECT_EQ(**runTask(loop, runner.measureDownload({}, silent)), (SpeedTestTransfer{40, 0.32, 0.001}));
}

TEST_F(SpeedTestTest, FinishedTestHasAllFigures) {
    ping.latencies = {10, 12, 40, 11, -5, 23};
    std::vector<double> steps;
    const auto subscription = monitor.progress.subscribe([&](double progress) { steps.push_back(progress); });
    monitor.startTest();
    monitor.startTest();
    loop.advance(0.45);
    EXPECT_EQ(monitor.phase.value(), Phase::Download);
    EXPECT_TRUE(session.requests.empty()) << "idle latency comes first";
    loop.advance(20);
    EXPECT_FALSE(monitor.isRunning.value());
    EXPECT_EQ(monitor.baselineProbeFailedAttemptIndices.value(), std::vector<std::int64_t>{5});
    EXPECT_EQ(monitor.latestResult.value(), (SpeedTestResult{WallTime(std::chrono::milliseconds(8500)), 64, 24, 11.5,
                                                             23, 23, 2, 2, Grade::B, Grade::B, true}));
    EXPECT_EQ(monitor.phase.value(), Phase::Completed);
    EXPECT_EQ(steps, (std::vector<double>{0, 0.125, 0.25, 0.375, 0.5, 0.5, 0.625, 0.75, 0.875, 1, 1}));
    EXPECT_EQ(ping.count, 5U + 2 * 9) << "a sample each 0.45 s, and none after the end";
    monitor.startTest();
    EXPECT_EQ(monitor.latestResult.value(), std::nullopt);
    EXPECT_EQ(monitor.uploadBufferbloatGrade.value(), std::nullopt);
}

TEST_F(SpeedTestTest, GradeStandsOnBothLatencies) {
    struct {
        std::optional<double> loaded, idle;
        std::optional<Grade> grade;
    } const cases[] = {{199, 100, Grade::A}, {200, 100, Grade::B}, {299, 100, Grade::B}, {300, 100, Grade::C},
                       {499, 100, Grade::C}, {500, 100, Grade::F}, {20, 0, {}},          {0, 10, {}},
                       {{}, 10, {}},         {20, {}, {}}};
    for (const auto& [loaded, idle, grade] : cases) {
        const auto ratio = bufferbloatRatio(loaded, idle);
        EXPECT_EQ(ratio ? std::optional(bufferbloatGrade(*ratio, {})) : std::nullopt, grade);
    }
    ping.latencies = {-1};
    monitor.startTest();
    loop.advance(20);
    EXPECT_EQ(monitor.baselineProbeFailedAttemptIndices.value(), (std::vector<std::int64_t>{1, 2, 3, 4, 5}));
    EXPECT_EQ(monitor.latestResult.value(),
              (SpeedTestResult{WallTime(std::chrono::milliseconds(8500)), 64, 24, {}, {}, {}, {}, {}, {}, {}, true}));
}

TEST_F(SpeedTestTest, StoppedTestKeepsItsFiguresAndItsReason) {
    const auto refused = "Speed test server returned an unexpected response.";
    const auto invalid = "Speed test request configuration is invalid.";
    struct {
        const char* name;
        SpeedTestConfiguration transfer;
        std::size_t request;
        URLSessionOutcome outcome;
        double cancelAfter;
        std::optional<std::string> message;
        std::optional<double> download;
    } const cases[] = {
        {"cancelled while idle", {}, 0, {}, 0.25, {}, {}},
        {"cancelled in the last idle probe", {}, 0, {}, 0.45, {}, {}},
        {"cancelled download", {}, 0, {}, 2, {}, {}},
        {"cancelled upload", {}, 0, {}, 6, {}, 64},
        {"download timed out", {}, 2, httpFailure(Kind::TimedOut), 1.01, "it failed", {}},
        {"not HTTP", {}, 3, httpFailure(Kind::NotHTTP), 1.01, refused, {}},
        {"upload refused", {}, 7, httpResponse(500), 5.01, refused, 64},
        {"nothing to get", {.downloadChunks = 0}, 0, {}, 0.51, invalid, {}},
        {"nothing to send", {.uploadChunks = 0}, 0, {}, 4.51, invalid, 64},
        {"nothing sent", {.uploadChunkSizeBytes = 0}, 0, {}, 8.51, "Speed test transferred no data.", 64},
    };
    for (const auto& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        answer(testCase.request, testCase.outcome);
        SpeedTestMonitor stopped(loop, {.transfer = testCase.transfer}, runner, prober, sleeper,
                                 [] { return WallTime(); });
        stopped.startTest();
        loop.advance(testCase.cancelAfter);
        EXPECT_EQ(stopped.isRunning.value(), !testCase.message);
        stopped.cancelTest();
        loop.runUntilIdle();
        EXPECT_FALSE(stopped.isRunning.value());
        EXPECT_EQ(loop.timerCount(), 0U) << "nothing of it goes on";
        EXPECT_EQ(stopped.phase.value(), testCase.message ? Phase::Failed : Phase::Cancelled);
        EXPECT_EQ(stopped.progress.value(), 0);
        EXPECT_EQ(stopped.lastErrorMessage.value(), testCase.message);
        EXPECT_EQ(stopped.downloadMbps.value(), testCase.download);
        EXPECT_EQ(stopped.latestResult.value(), std::nullopt);
    }
}

} // namespace
} // namespace tolvo::testing
