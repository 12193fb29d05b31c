#include "presentation/channel_scan/channel_scan_content.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

constexpr WiFiBand band24 = WiFiBand::TwoPointFourGigahertz;

ChannelCongestionSample sample(std::int64_t channel, double score, double normalized = 0, WiFiBand band = band24) {
    return {channel, band, 2, -60, score, normalized};
}

class ChannelScanWindow : public ::testing::Test {
protected:
    ChannelScanContent content() {
        return channelScanContent({latestResult, isScanning, completedPasses, totalPasses}, {});
    }
    ChannelScanContent contentOf(ChannelScanResult result) {
        latestResult.set(std::move(result));
        return content();
    }
    static ChannelScanResult comparing(std::int64_t current, double c, std::int64_t suggested, double r) {
        ChannelScanResult result;
        result.channels = {sample(current, c), sample(suggested, r)};
        result.currentChannelNumber = current;
        result.currentBand = band24;
        result.suggestedChannelNumber = suggested;
        result.suggestedBand = band24;
        return result;
    }

    Published<std::optional<ChannelScanResult>> latestResult;
    Published<bool> isScanning{false};
    Published<std::int64_t> completedPasses{0};
    Published<std::int64_t> totalPasses{0};
};

TEST_F(ChannelScanWindow, ButtonSaysWhatItDoes) {
    EXPECT_EQ(content().buttonLabel, "Scan Now");
    EXPECT_EQ(content().totalPasses, 1);
    isScanning.set(true);
    EXPECT_EQ(content().buttonLabel, "Cancel");
    isScanning.set(false);
    EXPECT_EQ(contentOf({}).buttonLabel, "Scan Again");
}

TEST_F(ChannelScanWindow, ComparesInWords) {
    struct Row {
        std::int64_t current;
        double c;
        std::int64_t suggested;
        double r;
        const char* text;
    };
    for (const Row& row :
         {Row{3, 2.0, 6, 1.5, "Switching to Ch 6 may reduce interference by about 25%."},
          Row{3, 8, 6, 7, "Switching to Ch 6 may reduce interference by about 12.5%."},
          Row{3, 1.5, 6, 2.0, "Current channel is about 33.3% cleaner than the recommended channel right now."},
          Row{3, 0, 6, 0, "Current and recommended channels have the same measured interference."},
          Row{3, 0.004, 6, 0, "Switching to Ch 6 may reduce interference by about 40%."},
          Row{6, 1, 6, 1, "Current channel already matches the recommendation."}})
        EXPECT_EQ(contentOf(comparing(row.current, row.c, row.suggested, row.r)).comparison, row.text);
}

TEST_F(ChannelScanWindow, WithoutWiFiEverythingIsUnavailable) {
    const ChannelScanContent shown = contentOf({});
    EXPECT_EQ(shown.current.lines, std::vector<std::string>{"Unavailable"});
    EXPECT_EQ(shown.recommended.lines, std::vector<std::string>{"Unavailable"});
    EXPECT_EQ(shown.comparison, "Run a scan to compare current and recommended channel strength.");
    EXPECT_TRUE(shown.rows.empty());
}

TEST_F(ChannelScanWindow, ListsTheOwnChannelTheRecommendedOneAndThenTheCleanest) {
    ChannelScanResult result = comparing(9, 5, 11, 4);
    result.channels.push_back(sample(36, 0, 0, WiFiBand::FiveGigahertz));
    for (std::int64_t channel = 20; channel > 0; --channel) {
        if (channel != 9 && channel != 11)
            result.channels.push_back(sample(channel, channel % 2 == 0 ? 1 : 2, 0.34));
    }
    const auto rows = contentOf(result).rows;
    ASSERT_EQ(rows.size(), 12U);
    EXPECT_EQ(rows[0].title + rows[0].score + rows[0].count, "Ch 9Score 5.002 networks");
    EXPECT_EQ(rows[0].tags, (std::vector<ChannelScanMarkerTag>{{"Current", Tone::Blue}}));
    EXPECT_EQ(rows[1].title, "Ch 11");
    EXPECT_EQ(rows[2].title, "Ch 2");
    EXPECT_EQ(rows[2].barColor, Tone::Orange);
    EXPECT_EQ(rows[11].title, "Ch 20");
}

TEST_F(ChannelScanWindow, ListsACurrentChannelThatNoSampleHas) {
    ChannelScanResult result = comparing(6, 1, 6, 1);
    result.currentChannelNumber = 14;
    result.currentChannelInterferenceScore = 0.5;
    const ChannelScanContent shown = contentOf(result);
    EXPECT_EQ(shown.current.lines, (std::vector<std::string>{"Ch 14 (2.4 GHz)", "Score 0.50", "0 nearby networks"}));
    EXPECT_EQ(shown.rows[0].title + " " + shown.rows[0].score, "Ch 14 Score 0.00");
    EXPECT_EQ(shown.rows.size(), 2U);
}

} // namespace
} // namespace tolvo::testing
