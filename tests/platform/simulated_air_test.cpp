#include "platform/demo/simulated_air.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace tolvo::testing {
namespace {

std::vector<WiFiLink> walk(std::uint64_t seed, double seconds, double interval) {
    ManualLoop loop;
    loop.advance(12345);
    SimulatedAir air(loop, seed);
    std::vector<WiFiLink> links;
    for (double time = 0; time < seconds; time += interval) {
        links.push_back(air.currentLink().value());
        loop.advance(interval);
    }
    return links;
}

TEST(SimulatedAir, IsTheSameWalkForASeedHoweverOftenItIsRead) {
    const auto slow = walk(1, 120, 2);
    const auto quick = walk(1, 120, 0.25);
    for (std::size_t i = 0; i < slow.size(); ++i)
        EXPECT_EQ(slow[i], quick[i * 8]) << i;
    EXPECT_NE(walk(2, 120, 2), slow);
}

TEST(SimulatedAir, RoamsBetweenItsAccessPointsWithPlausibleLevels) {
    const auto links = walk(7, 3 * secondsOfTour(), 0.25);
    std::set<std::string> accessPoints;
    int roams = 0;
    for (std::size_t i = 1; i < links.size(); ++i) {
        const WiFiLink& link = links[i];
        const bool isSame = link.bssid == links[i - 1].bssid;
        accessPoints.insert(*link.bssid);
        roams += isSame ? 0 : 1;
        EXPECT_EQ(link.ssid, "Tolvo Demo");
        EXPECT_TRUE(link.rssiValue > -85 && link.rssiValue < -20) << link.rssiValue;
        EXPECT_TRUE(link.noiseMeasurement >= -97 && link.noiseMeasurement <= -88) << link.noiseMeasurement;
        EXPECT_TRUE(link.transmitRate >= 14 && link.transmitRate <= 867) << link.transmitRate;
        EXPECT_LE(std::abs(link.rssiValue - links[i - 1].rssiValue), isSame ? 8 : 40);
    }
    EXPECT_EQ(accessPoints.size(), 2u);
    EXPECT_TRUE(roams >= 4 && roams <= 12) << roams;
}

TEST(SimulatedAir, ScansInAPlausibleTime) {
    ManualLoop loop;
    SimulatedAir air(loop, 7);
    const auto found = runTask(loop, air.scan());
    EXPECT_NEAR(loop.elapsed(), 2.8, 0.1);
    std::set<std::string> names;
    for (const WiFiNetwork& network : found->value())
        names.insert(network.ssid.value_or("hidden") + " " + std::to_string(network.channel->channelNumber));
    EXPECT_TRUE(names.contains("Tolvo Demo 44") && names.contains("Studio Nord 1")) << names.size();
    EXPECT_GE(names.size(), 4u);
}

} // namespace
} // namespace tolvo::testing
