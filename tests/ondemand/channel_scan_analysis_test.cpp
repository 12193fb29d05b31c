#include "ondemand/channel_scan_analysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>

namespace tolvo::testing {
namespace {

using enum WiFiBand;

WiFiScannedNetwork network(std::optional<std::string> bssid, std::int64_t channel, WiFiBand band,
                           std::int64_t rssi = -50) {
    return {"net", std::move(bssid), rssi, channel, band};
}

ChannelScanResult analyze(const std::vector<ChannelScanPass>& passes, CurrentChannel current = {}) {
    return analyzeChannelScan(passes, 3, current, {});
}

ChannelCongestionSample sampleOn(const ChannelScanResult& result, std::int64_t channel) {
    const auto sample = std::ranges::find(result.channels, channel, &ChannelCongestionSample::channelNumber);
    return sample == result.channels.end() ? ChannelCongestionSample{} : *sample;
}

TEST(ChannelScan, OneNetworkSpreadsOverItsNeighbours) {
    const ChannelScanPass pass{network("a", 6, TwoPointFourGigahertz)};
    for (const auto& [current, suggested] : {std::pair<std::optional<std::int64_t>, int>{{}, 1}, {6, 1}, {7, 11}}) {
        const auto result = analyze({pass, pass, pass}, {current, TwoPointFourGigahertz});
        for (const auto& [channel, score] : {std::pair{6, 1.0}, {5, 0.8}, {10, 0.2}, {11, 0.0}}) {
            EXPECT_DOUBLE_EQ(sampleOn(result, channel).interferenceScore, score) << channel;
            EXPECT_EQ(sampleOn(result, channel).averageRSSIDbm, score > 0 ? -50 : -100) << channel;
        }
        EXPECT_EQ(result.suggestedChannelNumber, suggested);
    }
}

TEST(ChannelScan, SignalWeightsAreBoundedInclusively) {
    const auto scoreAt = [](std::int64_t rssi, std::int64_t channel) {
        const ChannelScanPass pass{network("a", 44, FiveGigahertz, rssi)};
        return sampleOn(analyze({pass, pass, pass}), channel).interferenceScore;
    };
    const double weights[] = {1.0, 0.75, 0.5, 0.25, 0.1};
    for (int step = 0; step < 4; ++step) {
        EXPECT_DOUBLE_EQ(scoreAt(-55 - 10 * step, 44), weights[step]);
        EXPECT_DOUBLE_EQ(scoreAt(-56 - 10 * step, 44), weights[step + 1]);
    }
    EXPECT_EQ(scoreAt(-50, 40), 0) << "channels of 5 GHz stand alone";
}

TEST(ChannelScan, MergesPassesByAccessPointNameChannelAndBand) {
    const ChannelScanPass twice{network("a", 36, FiveGigahertz, -60), network("a", 36, FiveGigahertz, -50)};
    const ChannelScanPass others{network("a", 36, FiveGigahertz, -80), network({}, 36, FiveGigahertz),
                                 network({}, 36, FiveGigahertz), network("a", 100, FiveGigahertz),
                                 network("x", 0, Unknown)};
    const auto result = analyze({twice, others, {}});
    EXPECT_EQ(result.scannedNetworkCount, 5);
    EXPECT_EQ(sampleOn(result, 36).networkCount, 2);
    // Seen twice at -70 on average, and once at -50 without an access point.
    EXPECT_DOUBLE_EQ(sampleOn(result, 36).interferenceScore, 2.0 / 3 * 0.5 + 1.0 / 3);
    EXPECT_DOUBLE_EQ(sampleOn(result, 36).averageRSSIDbm, (2 * -70.0 + -50) / 3);
    EXPECT_DOUBLE_EQ(sampleOn(result, 100).normalizedCongestion, 0.5);
    EXPECT_EQ(result.channels.size(), 10U) << "nine, and the one beside them that a network uses";
}

TEST(ChannelScan, NothingSeen) {
    struct Case {
        CurrentChannel current;
        std::size_t samples;
        std::optional<std::int64_t> suggested;
        std::optional<WiFiBand> band;
    };
    const Case cases[] = {{{}, 0, {}, {}},
                          {{36, FiveGigahertz}, 9, 36, FiveGigahertz},
                          {{100, FiveGigahertz}, 10, 149, FiveGigahertz},
                          {{3, TwoPointFourGigahertz}, 11, 1, TwoPointFourGigahertz},
                          {{std::numeric_limits<std::int64_t>::min(), FiveGigahertz}, 10, 36, FiveGigahertz},
                          {{9, Unknown}, 0, {}, Unknown},
                          {{9, {}}, 0, {}, {}}};
    for (const Case& c : cases) {
        const auto result = analyze({{}, {}, {}}, c.current);
        EXPECT_EQ(result.channels.size(), c.samples);
        EXPECT_EQ(result.suggestedChannelNumber, c.suggested);
        EXPECT_EQ(result.suggestedBand, c.band);
    }
}

TEST(ChannelScan, RecommendationStaysInTheBandInUse) {
    const ChannelScanPass pass{network("a", 1, SixGigahertz), network("b", 1, TwoPointFourGigahertz),
                               network("c", 6, TwoPointFourGigahertz, -80), network("d", 36, FiveGigahertz)};
    EXPECT_EQ(analyze({pass}, {36, FiveGigahertz}).suggestedChannelNumber, 40);
    const auto bandUnknown = analyze({pass}, {1, {}});
    EXPECT_EQ(bandUnknown.suggestedChannelNumber, 11);
    EXPECT_DOUBLE_EQ(*bandUnknown.currentChannelInterferenceScore, 1.0 / 3) << "the first channel 1 of the list";
}

} // namespace
} // namespace tolvo::testing
