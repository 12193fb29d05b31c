#include "core/monitoring_lifecycle_controller.h"
#include "core/task_sleeper.h"
#include "monitors/captive_portal_monitor.h"
#include "monitors/connection_monitor.h"
#include "monitors/dns_monitor.h"
#include "monitors/health_aggregation_controller.h"
#include "monitors/ping_monitor.h"
#include "monitors/wifi_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_wifi.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <array>

namespace tolvo::testing {
namespace {

/// A network that is well, and how often each monitor asked for it.
struct WellNetwork final : WiFiInterfaceProviding,
                           PingProbeRunning,
                           DNSLookupRunning,
                           TCPConnectionCounting,
                           CaptivePortalChecking {
    std::optional<WiFiInterfaceSnapshot> currentSnapshot() override {
        ++asked[0];
        return reading();
    }
    Task<std::optional<std::string>> routerIPAddress(double) override {
        ++asked[1];
        co_return "192.0.2.1";
    }
    Task<PingProbeMeasurement> ping(std::string, double) override { co_return PingProbeMeasurement{3, 1, 0, true}; }
    Task<std::optional<double>> queryTime(std::string, double) override {
        ++asked[2];
        co_return 5;
    }
    Task<std::optional<TCPConnectionStateCounts>> connectionCounts(double) override {
        ++asked[3];
        co_return TCPConnectionStateCounts{10, 1, 1};
    }
    Task<CaptivePortalDetectionMeasurement> check(double) override {
        ++asked[4];
        CaptivePortalDetectionMeasurement clear;
        clear.didSucceed = true;
        co_return clear;
    }
    std::array<int, 5> asked{};
};

TEST(Endurance, ADayOfPollsChangesAndSleepsEndsAsItsFirstMinuteDid) {
    ManualLoop loop;
    TaskSleeper sleeper;
    InMemoryAppSettingsStore settings;
    NoOpNetworkChangeObserver network;
    NoOpSleepWakeObserver power;
    WellNetwork well;
    ScriptedMetadataResolver resolver;
    resolver.delay = 0.1;
    const auto now = [&loop] { return WallTime(loop.now().time_since_epoch()); };
    WiFiMonitor wifi(loop, {}, well, resolver, sleeper, now);
    PingMonitor ping(loop, {}, well, sleeper, now);
    DNSMonitor dns(loop, {}, well, sleeper, now);
    ConnectionMonitor connections(loop, {}, well, sleeper, now);
    CaptivePortalMonitor portal(loop, {}, well, sleeper, now);
    MonitoringLifecycleController lifecycle(loop, {}, {wifi, ping, dns, connections, portal}, network, power, sleeper,
                                            settings, &wifi.latestIdentity);
    const HealthAggregationController health(loop,
                                             {lifecycle.isMonitoringEnabled, wifi.isConnected, wifi.latestSnapshot,
                                              ping.routerResult, ping.internetResult, ping.isRouterIgnored,
                                              dns.latestResult},
                                             now);
    const auto histories = [&] {
        return std::array{wifi.history.value().size(),         ping.routerHistory.value().size(),
                          ping.internetHistory.value().size(), dns.history.value().size(),
                          connections.history.value().size(),  portal.history.value().size()};
    };
    const auto all = [](std::size_t size) { return std::array{size, size, size, size, size, size}; };
    settings.setBatteryFriendly(false);
    lifecycle.start();
    loop.advance(58 * 0.5 + 0.2);
    EXPECT_EQ(histories(), all(59));
    loop.advance(30);
    const std::size_t timers = loop.timerCount();
    std::size_t usedBytes = 0;
    for (int hour = 0; hour < 24; ++hour) {
        well.asked = {};
        usedBytes = hour == 0 ? mallinfo2().uordblks : usedBytes;
        lifecycle.setBatteryFriendly(hour >= 1);
        loop.advance(3000);
        // One more after a wake, whose first poll comes at once.
        const int polls = (hour < 1 ? 6000 : 750) + (hour > 0 ? 1 : 0);
        EXPECT_EQ(well.asked, (std::array{polls, polls, polls, polls, polls})) << hour;
        EXPECT_EQ(histories(), all(60));
        EXPECT_EQ(health.healthState.value(), HealthState::Good);
        network.onNetworkChange();
        EXPECT_EQ(histories(), all(0));
        loop.advance(599);
        EXPECT_EQ(histories(), all(60));
        power.onWillSleep();
        loop.advance(1);
        EXPECT_EQ(loop.timerCount(), 0U);
        power.onDidWake();
    }
    loop.advance(301);
    EXPECT_EQ(histories(), all(60));
    EXPECT_EQ(loop.timerCount(), timers);
    EXPECT_LT(mallinfo2().uordblks, usedBytes + 4096);
}

} // namespace
} // namespace tolvo::testing
