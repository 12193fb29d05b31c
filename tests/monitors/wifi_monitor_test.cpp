#include "core/task_sleeper.h"
#include "monitors/wifi_monitor.h"
#include "probes/wifi_link.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_wifi.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

TEST(WiFiLink, RatioNeedsPlausibleLevels) {
    struct Case {
        std::int64_t rssi, noise;
        std::optional<std::int64_t> ratio;
    };
    for (const auto& [rssi, noise, ratio] :
         {Case{-50, -95, 45}, Case{-100, -120, 20}, Case{0, -20, 20}, Case{-50, 0, {}}, Case{-50, -121, {}},
          Case{-10, -19, {}}, Case{-101, -110, {}}, Case{1, -95, {}}, Case{-95, -95, {}}})
        EXPECT_EQ(signalToNoiseRatioDb(rssi, noise), ratio) << rssi << " over " << noise;
}

class WiFiMonitorTest : public ::testing::Test {
protected:
    const WiFiSnapshot& latest() const { return *monitor.latestSnapshot.value(); }
    std::size_t sessionLength() const { return monitor.history.value().size(); }

    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedWiFiInterfaceProvider interface;
    ScriptedMetadataResolver resolver;
    WiFiMonitor monitor{loop,     {},      interface,
                        resolver, sleeper, [this] { return WallTime(loop.now().time_since_epoch()); }};
};

TEST_F(WiFiMonitorTest, AddressArrivesLaterAndKeepsTheSession) {
    monitor.startMonitoring();
    loop.advance(0.5);
    EXPECT_EQ(latest().ipAddress, std::nullopt);
    loop.advance(1);
    EXPECT_TRUE(latest().isVPNActive);
    EXPECT_EQ(latest().timestamp, WallTime()) << "a reading keeps its date";
    EXPECT_EQ(monitor.latestIdentity.value()->ipAddress, "192.0.2.7");
    loop.advance(1);
    ASSERT_EQ(sessionLength(), 2U);
    EXPECT_EQ(monitor.history.value()[0].ipAddress, std::nullopt);
    EXPECT_EQ(monitor.history.value()[1].ipAddress, "192.0.2.7");
}

TEST_F(WiFiMonitorTest, RefreshesAtMostEveryTenSecondsUnlessForced) {
    monitor.updatePollInterval(0.5);
    monitor.startMonitoring();
    loop.advance(11);
    EXPECT_EQ(resolver.askedCount, 1) << "ten seconds after the end of the first it is not yet due";
    loop.advance(0.5);
    EXPECT_EQ(resolver.askedCount, 2);
    monitor.refreshNow();
    loop.advance(0.9);
    EXPECT_EQ(resolver.askedCount, 2) << "one is under way";
    loop.advance(0.7);
    EXPECT_EQ(resolver.askedCount, 3) << "the forced one follows its end";
    loop.advance(60);
    EXPECT_EQ(sessionLength(), 60U);
}

TEST_F(WiFiMonitorTest, AnotherAccessPointBeginsASession) {
    monitor.startMonitoring();
    loop.advance(0.5);
    interface.current = reading("02:00:00:00:00:02");
    monitor.refreshNow();
    loop.runUntilIdle();
    EXPECT_EQ(latest().bssid, "02:00:00:00:00:02");
    EXPECT_EQ(sessionLength(), 1U);
    loop.advance(0.6);
    EXPECT_EQ(latest().ipAddress, std::nullopt) << "the refresh of the former network must not publish";
    loop.advance(2);
    EXPECT_EQ(latest().ipAddress, "192.0.2.7") << "but its address serves the next poll";
}

TEST_F(WiFiMonitorTest, LostLinkEndsTheSession) {
    interface.current->ssid = interface.current->bssid = std::nullopt;
    monitor.startMonitoring();
    loop.advance(0.5);
    EXPECT_TRUE(monitor.isConnected.value()) << "a channel alone is a link";
    interface.current->channelNumber.reset();
    loop.advance(2);
    EXPECT_FALSE(monitor.isConnected.value());
    EXPECT_EQ(monitor.latestIdentity.value(), std::nullopt);
    EXPECT_EQ(sessionLength(), 0U);
    monitor.stopMonitoring();
    loop.runUntilIdle();
    EXPECT_EQ(loop.timerCount(), 0U) << "a stop ends polls and refresh";
}

TEST_F(WiFiMonitorTest, ResetWhileTheIdentityIsTold) {
    monitor.startMonitoring();
    loop.advance(1.5);
    const auto subscription = monitor.latestIdentity.subscribe([&](const auto& identity) {
        if (identity && identity->ipAddress == "198.51.100.1")
            monitor.resetTransientState();
    });
    resolver.ipAddress = "198.51.100.1";
    monitor.refreshNow();
    loop.advance(1.1);
    EXPECT_FALSE(monitor.isConnected.value());
    EXPECT_EQ(monitor.latestIdentity.value()->ipAddress, "198.51.100.1");
}

} // namespace
} // namespace tolvo::testing
