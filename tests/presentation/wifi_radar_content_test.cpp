#include "presentation/wifi_radar/wifi_radar_content.h"

#include "tests/support/dashboard_values.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class WiFiRadarWindow : public ::testing::Test {
protected:
    WiFiRadarContent content() {
        return wifiRadarContent(
            {radarSnapshot, radarHistory, monitorSnapshot, monitorHistory, nearbyNetworks, nearbyErrorMessage});
    }

    Published<std::optional<WiFiSnapshot>> radarSnapshot, monitorSnapshot;
    Published<std::vector<WiFiSnapshot>> radarHistory, monitorHistory;
    Published<std::vector<RadarNearbyNetwork>> nearbyNetworks;
    Published<std::optional<std::string>> nearbyErrorMessage;
};

TEST_F(WiFiRadarWindow, WithoutWiFiItSaysSo) {
    const WiFiRadarContent shown = content();
    EXPECT_EQ(shown.networkName + "|" + shown.channelLine + "|" + shown.hint,
              "No Wi-Fi Network|Channel unavailable|keep going");
    EXPECT_EQ(shown.coverageMessage, "Weak spot: move closer to the router.");
    EXPECT_EQ(shown.scoreColor, Tone::Orange);
    EXPECT_FALSE(shown.hasCurrentTag);
    EXPECT_EQ(shown.nearbyPlaceholder, "Scanning nearby networks...");
    EXPECT_EQ(shown.cards[1].value + shown.cards[2].value + shown.cards[3].value, "—00");
}

TEST_F(WiFiRadarWindow, FallsBackToTheMonitorUntilItsOwnFirstPoll) {
    monitorSnapshot.set(exampleWiFiSnapshot());
    monitorHistory.set({exampleWiFiSnapshot()});
    EXPECT_EQ(content().networkName + " " + content().channelLine, "Home Ch 36 . 5 GHz");
    EXPECT_EQ(content().cards[3].samples, std::vector<double>{866});
    EXPECT_EQ(content().cards[3].yDomain, (ValueRange{0, 866}));
    WiFiSnapshot own = exampleWiFiSnapshot();
    own.ssid = " ";
    radarSnapshot.set(own);
    EXPECT_EQ(content().networkName, " ");
    EXPECT_FALSE(content().hasCurrentTag);
}

TEST_F(WiFiRadarWindow, ListsTheOthersOrSaysWhyNot) {
    radarSnapshot.set(exampleWiFiSnapshot());
    nearbyNetworks.set({{"02:1", "Home", -40, 6, WiFiBand::TwoPointFourGigahertz}});
    nearbyErrorMessage.set("Nearby scan unavailable.");
    EXPECT_EQ(content().nearbyPlaceholder, "Nearby scan unavailable.");
    nearbyNetworks.set({{"02:2", "Café", -71, 11, WiFiBand::TwoPointFourGigahertz}});
    EXPECT_EQ(content().nearby, (std::vector<RadarNearbyNetworkRow>{{"Café", "-71 dBm", "Ch 11 . 2.4 GHz"}}));
    EXPECT_EQ(content().nearbyPlaceholder, "");
}

TEST_F(WiFiRadarWindow, ColourAndSymbolChangeAtScoresOfTheirOwn) {
    const auto shownFor = [this](std::int64_t rssi, std::int64_t snr) {
        WiFiSnapshot snapshot = exampleWiFiSnapshot();
        snapshot.rssiDbm = rssi;
        snapshot.snrDb = snr;
        snapshot.noiseFloorDbm = -100;
        snapshot.linkRateMbps = 1200;
        radarSnapshot.set(snapshot);
        return content();
    };
    const auto expect = [](const WiFiRadarContent& shown, std::int64_t score, Tone color, const char* symbol) {
        EXPECT_EQ(shown.score, score);
        EXPECT_EQ(shown.scoreColor, color) << score;
        EXPECT_EQ(shown.cards.back().color, color) << score;
        EXPECT_EQ(shown.scoreSymbolName, symbol) << score;
    };
    expect(shownFor(-45, 14), 75, Tone::Green, "checkmark.circle.fill");
    expect(shownFor(-45, 13), 74, Tone::Yellow, "checkmark.circle.fill");
    expect(shownFor(-45, 1), 66, Tone::Yellow, "checkmark.circle.fill");
    expect(shownFor(-45, 0), 65, Tone::Yellow, "exclamationmark.triangle.fill");
    expect(shownFor(-90, 28), 45, Tone::Yellow, "exclamationmark.triangle.fill");
    expect(shownFor(-90, 27), 44, Tone::Orange, "exclamationmark.triangle.fill");
}

TEST(RadarSweep, TurnsOnceIn2Point2SecondsFromTheTop) {
    EXPECT_EQ(radarSweepDegrees(0), -90);
    EXPECT_NEAR(radarSweepDegrees(1.1), 90, 1e-9);
    EXPECT_NEAR(radarSweepDegrees(22.55), 0, 1e-6);
}

} // namespace
} // namespace tolvo::testing
