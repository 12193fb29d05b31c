#include "platform/demo/simulated_air.h"
#include "tests/support/run_task.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tolvo::testing {
namespace {

std::vector<WiFiLink> walk(std::uint64_t seed, double seconds, double interval) {
    ManualLoop loop;
    loop.advance(static_cast<double>(seed));
    SimulatedAir air(loop, seed);
    std::vector<WiFiLink> links;
    for (double time = 0; time < seconds; time += interval, loop.advance(interval))
        links.push_back(air.currentLink().value());
    return links;
}

TEST(SimulatedAir, IsTheSameWalkForASeedHoweverOftenItIsRead) {
    const auto slow = walk(1, 120, 2);
    const auto quick = walk(1, 120, 0.25);
    for (std::size_t i = 0; i < slow.size(); ++i)
        EXPECT_EQ(slow[i], quick[i * 8]) << i;
    EXPECT_NE(walk(2, 120, 2), slow);
}

TEST(SimulatedAir, RoamsWithPlausibleLevels) {
    const auto links = walk(7, 3 * secondsOfTour(), 0.25);
    int roams = 0;
    for (std::size_t i = 1; i < links.size(); ++i) {
        const WiFiLink& link = links[i];
        const bool hasRoamed = link.bssid != links[i - 1].bssid;
        roams += hasRoamed ? 1 : 0;
        EXPECT_TRUE(link.rssiValue > -85 && link.rssiValue < -20) << link.rssiValue;
        EXPECT_TRUE(link.noiseMeasurement >= -97 && link.noiseMeasurement <= -88) << link.noiseMeasurement;
        EXPECT_TRUE(hasRoamed || std::abs(link.rssiValue - links[i - 1].rssiValue) <= 8) << i;
    }
    EXPECT_TRUE(roams >= 4 && roams <= 12) << roams;

    ManualLoop loop;
    SimulatedAir air(loop, 7);
    EXPECT_GE(runTask(loop, air.scan())->value().size(), 5u);
    EXPECT_NEAR(loop.elapsed(), 2.8, 0.1);
}

} // namespace
} // namespace tolvo::testing
