#include "core/async/sleep.h"
#include "core/task_sleeper.h"
#include "monitors/ping_monitor.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <set>

namespace tolvo::testing {
namespace {

/// Each ping takes its host's delay; a cancelled one fails at once, as a probe does.
class ScriptedPingProbe final : public PingProbeRunning {
public:
    Task<std::optional<std::string>> routerIPAddress(double) override { co_return router; }
    Task<PingProbeMeasurement> ping(std::string host, double timeout) override {
        EXPECT_EQ(timeout, 1.5);
        hosts.push_back(host);
        try {
            co_await sleepFor(Seconds(host == "router" ? 0.4 : 0.3));
        } catch (const CancellationError&) {
            co_return PingProbeMeasurement{};
        }
        co_return answering.contains(host) ? PingProbeMeasurement{3, 0.5, 50, true} : PingProbeMeasurement{};
    }

    std::optional<std::string> router = "router";
    std::set<std::string> answering{"router", "1.1.1.1"};
    std::vector<std::string> hosts;
};

class PingMonitorTest : public ::testing::Test {
protected:
    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedPingProbe probe;
    PingMonitor monitor{loop, {}, probe, sleeper, [this] { return WallTime(loop.now().time_since_epoch()); }};
};

TEST_F(PingMonitorTest, PingsRouterAndInternetAtOnceAndStampsBothWithTheStart) {
    probe.answering = {"1.1.1.1"};
    loop.advance(5);
    const WallTime start{std::chrono::seconds(5)};
    monitor.startMonitoring();
    loop.advance(0.39);
    EXPECT_EQ(probe.hosts, (std::vector<std::string>{"router", "1.1.1.1"}));
    EXPECT_EQ(monitor.routerIPAddress.value(), "router");
    EXPECT_FALSE(monitor.internetResult.value());
    loop.advance(0.01);
    const PingResult router{PingTarget::Router, start, {}, {}, 100, false},
        internet{PingTarget::Internet, start, 3, 0.5, 50, true};
    EXPECT_EQ(monitor.routerResult.value(), router);
    EXPECT_EQ(monitor.internetResult.value(), internet);
    EXPECT_EQ(monitor.routerHistory.value(), std::vector{router});
}

TEST_F(PingMonitorTest, IgnoresARouterThatStaysSilentWhileTheInternetAnswers) {
    // A poll each: both answer (b), router alone (r), internet alone (i), neither (n), no router found (-).
    const struct {
        std::string polls, ignored;
    } cases[] = {{"iiiii", "..!!!"}, {"iiini", "..!.."}, {"iii-ii", "..!..."},
                 {"iibii", "....."}, {"iirii", "....."}, {"bbbnnn", "......"}};
    for (const auto& [polls, ignored] : cases) {
        monitor.resetTransientState();
        std::string seen;
        for (const char poll : polls) {
            probe.router = poll == '-' ? std::nullopt : std::optional("router");
            probe.answering = {poll == 'b' || poll == 'r' ? "router" : "", poll == 'b' || poll == 'i' ? "1.1.1.1" : ""};
            monitor.startMonitoring();
            loop.advance(1);
            monitor.stopMonitoring();
            seen += monitor.isRouterIgnored.value() ? '!' : '.';
        }
        EXPECT_EQ(seen, ignored) << polls;
    }
}

TEST_F(PingMonitorTest, KeepsTheRoutersHistoryWithoutARouterAndForgetsAllOnReset) {
    monitor.updatePollInterval(-1);
    EXPECT_EQ(monitor.pollInterval(), 0);
    monitor.startMonitoring();
    loop.advance(0.4 * 61);
    probe.router.reset();
    loop.advance(1);
    EXPECT_FALSE(monitor.routerIPAddress.value() || monitor.routerResult.value());
    EXPECT_EQ(monitor.internetHistory.value().back(), monitor.internetResult.value());
    EXPECT_EQ(monitor.routerHistory.value().size(), 60);
    EXPECT_EQ(monitor.internetHistory.value().size(), 60);
    EXPECT_GT(monitor.routerHistory.value().front().timestamp, WallTime());
    monitor.resetTransientState();
    EXPECT_FALSE(monitor.internetResult.value());
    EXPECT_TRUE(monitor.routerHistory.value().empty() && monitor.internetHistory.value().empty());
}

TEST_F(PingMonitorTest, RecordsThePingsThatAStopCutsShort) {
    monitor.startMonitoring();
    loop.advance(0.1);
    monitor.stopMonitoring();
    loop.advance(10);
    EXPECT_EQ(monitor.routerHistory.value().size(), 1);
    EXPECT_FALSE(monitor.internetResult.value()->didSucceed);
}

TEST_F(PingMonitorTest, TakesANewTargetFromTheNextPollOnUnlessItIsBlank) {
    monitor.updateInternetTarget(" \n");
    monitor.startMonitoring();
    loop.advance(1);
    monitor.updateInternetTarget("\t example.com \n");
    loop.advance(0.5);
    monitor.refreshNow();
    loop.runUntilIdle();
    EXPECT_EQ(probe.hosts, (std::vector<std::string>{"router", "1.1.1.1", "router", "example.com"}));
}

} // namespace
} // namespace tolvo::testing
