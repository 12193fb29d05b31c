#include "tests/support/speed_test_values.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

class SpeedTestWindow : public ::testing::Test, protected SpeedTestValues {
protected:
    SpeedTestContent content(const NumberFormat& format = {}) {
        return speedTestContent(sources, format, [](WallTime) { return std::string("09:30"); });
    }
};

TEST_F(SpeedTestWindow, InvitesBeforeTheFirstRun) {
    EXPECT_TRUE(content().isEmpty);
    EXPECT_EQ(content().buttonLabel, "Run Test");
    EXPECT_EQ(content().statusBadge, std::nullopt);
}

TEST_F(SpeedTestWindow, SaysThatItTakesTheBaselineUntilThereIsOne) {
    isRunning.set(true);
    phase.set(SpeedTestPhase::Download);
    EXPECT_EQ(content().statusLine, "Capturing baseline latency...");
    EXPECT_EQ(content().throughput[0].value, "—");
    EXPECT_EQ(content().insights[0].text, "Download lag under load: collecting sample...");
    baseline.set(12.4);
    EXPECT_EQ(content().statusLine, "Running download phase...");
    progress.set(0.456);
    EXPECT_EQ(content().progressPercent, "46%");
    EXPECT_EQ(content().buttonLabel, "Cancel");
}

TEST_F(SpeedTestWindow, ExplainsTheLagOfEachDirection) {
    struct Row {
        std::optional<double> loaded;
        std::optional<BufferbloatGrade> grade;
        SpeedTestPhase phase;
        const char *download, *upload;
    };
    using enum BufferbloatGrade;
    baseline.set(12.4);
    for (const Row& row :
         {Row{31.6, B, SpeedTestPhase::Upload, "12ms -> 32ms (grade B, minimal bufferbloat).",
              "12ms -> 32ms (grade B, minimal bufferbloat)."},
          Row{31.6,
              {},
              SpeedTestPhase::Completed,
              "12ms -> 32ms (grade unavailable).",
              "12ms -> 32ms (grade unavailable)."},
          Row{{}, {}, SpeedTestPhase::Upload, "sample unavailable for this run.", "collecting sample..."},
          Row{{},
              {},
              SpeedTestPhase::Failed,
              "sample unavailable for this run.",
              "sample unavailable for this run."}}) {
        downloadLoaded.set(row.loaded);
        uploadLoaded.set(row.loaded);
        downloadGrade.set(row.grade);
        uploadGrade.set(row.grade);
        phase.set(row.phase);
        EXPECT_EQ(content().insights[0].text, std::string("Download lag under load: ") + row.download);
        EXPECT_EQ(content().insights[1].text, std::string("Upload lag under load: ") + row.upload);
    }
}

TEST_F(SpeedTestWindow, KeepsWhatAFailedRunMeasured) {
    phase.set(SpeedTestPhase::Failed);
    download.set(94.26);
    downloadRatio.set(2.5);
    downloadGrade.set(BufferbloatGrade::F);
    const SpeedTestContent shown = content({","});
    EXPECT_FALSE(shown.isEmpty);
    EXPECT_EQ(shown.statusBadge, (Badge{"Failed", Tone::Red}));
    EXPECT_EQ(shown.throughput[0].value, "94,3 Mbps");
    EXPECT_EQ(shown.grades[0],
              (SpeedTestGradeTile{"Download", "F", "2,50x baseline", Tone::Red, "Download bufferbloat"}));
    EXPECT_EQ(shown.grades[1],
              (SpeedTestGradeTile{"Upload", "—", "ratio unavailable", Tone::Dimmed, "Upload bufferbloat"}));
    EXPECT_EQ(shown.buttonLabel + shown.lastTestedLine, "Run TestLast tested at —");
    latestResult.set(SpeedTestResult{});
    EXPECT_EQ(content().buttonLabel + content().lastTestedLine, "RetestLast tested at 09:30.");
}

TEST(SpeedTestServerTag, NamesTheServiceThatIsReallyAsked) {
    EXPECT_EQ(speedTestServerTag(*URL::parse("https://speed.cloudflare.com")), "Cloudflare");
    EXPECT_EQ(speedTestServerTag(*URL::parse("https://notcloudflare.com:8080/x")), "notcloudflare.com");
}

} // namespace
} // namespace tolvo::testing
