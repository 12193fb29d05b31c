#include "core/task_sleeper.h"
#include "ondemand/wifi_radar_monitor.h"
#include "ondemand/wifi_radar_nearby_networks_controller.h"
#include "ondemand/wifi_radar_quality.h"
#include "tests/support/manual_loop.h"
#include "tests/support/manual_scanner.h"
#include "tests/support/scripted_wifi.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

using enum WiFiBand;

TEST(WiFiRadarQuality, Scores) {
    const auto score = [](std::int64_t rssi, std::int64_t noise, std::optional<std::int64_t> snr,
                          std::optional<std::int64_t> linkRate) {
        return radarQualityScore(WiFiSnapshot{{}, "wlan0", {}, {}, rssi, noise, snr, linkRate, {}, {}, {}, false});
    };
    EXPECT_EQ(score(-45, -95, 50, 1200), 98);
    EXPECT_EQ(score(-30, -101, 70, 2400), 100);
    EXPECT_EQ(score(-60, -85, 25, 600), 57);
    EXPECT_EQ(score(-90, -100, {}, {}), 15);
    EXPECT_EQ(score(-95, -70, {}, {}), 0);
    EXPECT_EQ(radarQualityScore(std::nullopt), 0);
}

TEST(WiFiRadarQuality, MessagesAndDirection) {
    for (const auto& [score, beginning] :
         {std::pair{86, "Great"}, {85, "Good"}, {66, "Good"}, {65, "Keep"}, {46, "Keep"}, {45, "Weak"}})
        EXPECT_TRUE(radarCoverageMessage(score).starts_with(beginning)) << score;
    using Scores = std::vector<std::int64_t>;
    for (const Scores& scores : {Scores{70, 60}, {66, 70, 60}})
        EXPECT_TRUE(radarShouldGoBack(scores)) << ::testing::PrintToString(scores);
    for (const Scores& scores :
         {Scores{}, {70}, {60, 70}, {70, 70}, {60, 70, 71}, {90, 90, 90, 90, 50, 50, 50, 50, 60, 60, 60, 60}})
        EXPECT_FALSE(radarShouldGoBack(scores)) << ::testing::PrintToString(scores);
}

TEST(WiFiRadarMonitor, HistoryOfHalfAMinute) {
    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedWiFiInterfaceProvider interface;
    WiFiRadarMonitor monitor(loop, {}, interface, sleeper, [&] { return WallTime(loop.now().time_since_epoch()); });
    monitor.start();
    loop.advance(30);
    EXPECT_EQ(monitor.history.value().size(), 120U);
    EXPECT_EQ(monitor.history.value().front().timestamp, WallTime(std::chrono::milliseconds(250)));
    interface.current.reset();
    loop.advance(0.25);
    EXPECT_TRUE(monitor.history.value().empty() && !monitor.latestSnapshot.value() && !monitor.isConnected.value());
}

TEST(WiFiRadarNearby, StrongestOfEachAccessPointWithoutOnesOwn) {
    const WiFiScannedNetwork hidden{{}, {}, -80, 36, FiveGigahertz}, louder{{}, {}, -75, 36, FiveGigahertz};
    const WiFiScannedNetwork home{"home", "a", -60, 1, TwoPointFourGigahertz},
        roof{"Home ", "b", -50, 36, SixGigahertz};
    const auto nearby = nearbyNetworksOf({hidden, home, roof, louder, hidden});
    ASSERT_EQ(nearby.size(), 3U);
    EXPECT_EQ(nearby[0].id, "b") << "the strongest first";
    EXPECT_EQ(nearby[2], (RadarNearbyNetwork{"Hidden-36|-75", "Hidden-36", -75, 36, FiveGigahertz}));
    EXPECT_EQ(otherNetworks(nearby, " HOME\n").size(), 1U);
    EXPECT_EQ(otherNetworks(nearby, "  ").size(), 3U);
}

class NearbyControllerTest : public ::testing::Test {
protected:
    void finishScan(WiFiScanOutcome outcome) {
        loop.runUntilIdle();
        scanner.finish(std::move(outcome));
        loop.runUntilIdle();
    }

    const std::vector<WiFiScannedNetwork> one{{"cafe", "c", -60, 6, TwoPointFourGigahertz}};
    ManualLoop loop;
    ManualScanner scanner;
    WiFiRadarNearbyNetworksController controller{loop, scanner, 1.0};
};

TEST_F(NearbyControllerTest, FailureKeepsTheListAndTheNextScanClearsIt) {
    controller.start();
    controller.start();
    finishScan(one);
    loop.advance(2.9);
    EXPECT_EQ(scanner.scanCount, 1) << "an interval of one second is raised to three";
    loop.advance(0.1);
    finishScan(std::unexpected(WiFiNetworkScannerError{}));
    EXPECT_EQ(controller.lastErrorMessage.value(), "Nearby scan unavailable.");
    EXPECT_EQ(controller.nearbyNetworks.value().size(), 1U);
    loop.advance(3);
    finishScan(std::vector<WiFiScannedNetwork>{});
    EXPECT_EQ(controller.lastErrorMessage.value(), std::nullopt);
}

TEST_F(NearbyControllerTest, StopAndStartDuringAScan) {
    controller.start();
    loop.runUntilIdle();
    const auto firstScan = scanner.pending;
    controller.stop();
    controller.start();
    loop.runUntilIdle();
    firstScan.set(one);
    loop.runUntilIdle();
    EXPECT_EQ(controller.nearbyNetworks.value().size(), 1U) << "the scan that was under way still counts";
    EXPECT_TRUE(controller.isScanning.value()) << "the second one goes on";
    finishScan(one);
    controller.stop();
    loop.advance(60);
    EXPECT_EQ(scanner.scanCount, 2) << "and the last stop ends it";
}

} // namespace
} // namespace tolvo::testing
