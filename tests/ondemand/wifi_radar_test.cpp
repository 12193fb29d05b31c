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
    struct Case {
        std::int64_t rssi, noise;
        std::optional<std::int64_t> snr, linkRate;
        std::int64_t score;
    };
    for (const Case& c : {Case{-45, -95, 50, 1200, 98}, Case{-30, -100, 70, 2400, 100}, Case{-90, -70, {}, {}, 0},
                          Case{-90, -100, {}, {}, 15}, Case{-60, -85, 25, 600, 57}}) {
        WiFiSnapshot snapshot;
        snapshot.rssiDbm = c.rssi;
        snapshot.noiseFloorDbm = c.noise;
        snapshot.snrDb = c.snr;
        snapshot.linkRateMbps = c.linkRate;
        EXPECT_EQ(radarQualityScore(snapshot), c.score) << c.rssi << " over " << c.noise;
    }
    EXPECT_EQ(radarQualityScore(std::nullopt), 0);
}

TEST(WiFiRadarQuality, MessagesAndDirection) {
    for (const auto& [score, beginning] :
         {std::pair{86, "Great"}, {85, "Good"}, {66, "Good"}, {65, "Keep"}, {46, "Keep"}, {45, "Weak"}})
        EXPECT_TRUE(radarCoverageMessage(score).starts_with(beginning)) << score;
    using Scores = std::vector<std::int64_t>;
    const std::pair<Scores, bool> cases[] = {
        {{}, false},          {{70}, false},
        {{60, 70}, false},    {{70, 60}, true},
        {{70, 70}, false},    {{60, 70, 71}, false},
        {{66, 70, 60}, true}, {{90, 90, 90, 90, 50, 50, 50, 50, 60, 60, 60, 60}, false},
    };
    for (const auto& [scores, shouldGoBack] : cases)
        EXPECT_EQ(radarShouldGoBack(scores), shouldGoBack) << ::testing::PrintToString(scores);
}

TEST(WiFiRadarMonitor, HistoryOfHalfAMinute) {
    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedWiFiInterfaceProvider interface;
    int polls = 0;
    WiFiRadarMonitor monitor(loop, {}, interface, sleeper, [&] { return WallTime(std::chrono::seconds(++polls)); });
    monitor.start();
    loop.runUntilIdle();
    EXPECT_EQ(polls, 1);
    loop.advance(30);
    EXPECT_EQ(monitor.history.value().size(), 120U);
    EXPECT_EQ(monitor.history.value().front().timestamp, WallTime(std::chrono::seconds(2)));
    monitor.stop();
    loop.advance(5);
    EXPECT_EQ(polls, 121);
    monitor.start();
    loop.runUntilIdle();
    EXPECT_EQ(monitor.history.value().back().timestamp, WallTime(std::chrono::seconds(122)));
    EXPECT_EQ(monitor.latestSnapshot.value()->snrDb, 45);
    interface.current->ssid = interface.current->bssid = std::nullopt;
    loop.advance(0.25);
    EXPECT_TRUE(monitor.isConnected.value()) << "a channel is enough";
    interface.current.reset();
    loop.advance(0.25);
    EXPECT_FALSE(monitor.isConnected.value());
    EXPECT_EQ(monitor.latestSnapshot.value(), std::nullopt);
    EXPECT_TRUE(monitor.history.value().empty());
}

TEST(WiFiRadarNearby, StrongestOfEachAccessPointWithoutOnesOwn) {
    const std::vector<WiFiScannedNetwork> scan{{"home", "a", -60, 1, TwoPointFourGigahertz},
                                               {"home", "a", -50, 1, TwoPointFourGigahertz},
                                               {"Home ", "b", -70, 36, FiveGigahertz},
                                               {std::nullopt, std::nullopt, -80, 36, FiveGigahertz},
                                               {std::nullopt, std::nullopt, -75, 36, FiveGigahertz},
                                               {std::nullopt, std::nullopt, -85, 36, SixGigahertz}};
    const auto nearby = nearbyNetworksOf(scan);
    EXPECT_EQ(nearby, (std::vector<RadarNearbyNetwork>{{"a", "home", -50, 1, TwoPointFourGigahertz},
                                                       {"b", "Home ", -70, 36, FiveGigahertz},
                                                       {"Hidden-36|-75", "Hidden-36", -75, 36, FiveGigahertz},
                                                       {"Hidden-36|-85", "Hidden-36", -85, 36, SixGigahertz}}));
    EXPECT_EQ(otherNetworks(nearby, " HOME\n").size(), 2U);
    EXPECT_EQ(otherNetworks(nearby, "  ").size(), 4U);
    EXPECT_EQ(otherNetworks(nearby, std::nullopt).size(), 4U);
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
    EXPECT_FALSE(controller.isScanning.value());
    loop.advance(2.9);
    EXPECT_EQ(scanner.scanCount, 1) << "an interval of one second is raised to three";
    loop.advance(0.1);
    EXPECT_EQ(scanner.scanCount, 2);
    EXPECT_TRUE(controller.isScanning.value());
    finishScan(std::unexpected(WiFiNetworkScannerError{}));
    EXPECT_EQ(controller.lastErrorMessage.value(), "Nearby scan unavailable.");
    EXPECT_EQ(controller.nearbyNetworks.value().size(), 1U);
    loop.advance(3);
    finishScan(std::vector<WiFiScannedNetwork>{});
    EXPECT_EQ(controller.lastErrorMessage.value(), std::nullopt);
    EXPECT_TRUE(controller.nearbyNetworks.value().empty());
}

TEST_F(NearbyControllerTest, StopAndStartDuringAScan) {
    controller.start();
    loop.runUntilIdle();
    const auto firstScan = scanner.pending;
    controller.stop();
    EXPECT_FALSE(controller.isScanning.value());
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
    EXPECT_EQ(loop.timerCount(), 0U);
}

} // namespace
} // namespace tolvo::testing
