#include "core/task_sleeper.h"
#include "presentation/diagnostics_export/diagnostics_export_controller.h"
#include "tests/support/export_values.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_export.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace tolvo::testing {
namespace {

class DiagnosticsCollectionTest : public ::testing::Test {
protected:
    void endTests() {
        world.channelScan.isRunning.set(false);
        loop.advance(0.2);
        world.speedTest.isRunning.set(false);
        loop.advance(0.2);
    }
    void collectAtOnce() {
        controller.collect();
        loop.advance(0.6);
        endTests();
    }
    std::string shareAndHear() {
        controller.shareReport();
        loop.runUntilIdle();
        return controller.actionMessage.value()->text;
    }

    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedCollectionSources world;
    ScriptedExportServices services;
    DiagnosticsCollection collection{loop, world.sources(), sleeper, exportDate};
    DiagnosticsExportController controller{loop,     collection, services,
                                           services, services,   [](WallTime) { return std::string("today"); }};
};

TEST_F(DiagnosticsCollectionTest, StagesFollowEachOther) {
    controller.collect();
    EXPECT_EQ(controller.content().progress->message, "Collecting metrics...");
    loop.advance(0.53);
    EXPECT_EQ(controller.content().progress->message, "Collecting latency metrics...");
    loop.advance(0.01);
    const auto progress = controller.content().progress;
    EXPECT_EQ(progress->message, "Collecting channel info...");
    EXPECT_EQ(progress->value, 0.54);
    EXPECT_EQ(std::ranges::count(progress->stages, true, &CollectionStageRow::isCompleted), 3);
    endTests();
    EXPECT_EQ(collection.collectionMessage.value(), "Report ready.");
    EXPECT_TRUE(controller.content().ready);
}

TEST_F(DiagnosticsCollectionTest, TestsEndInTimeOrAreCancelled) {
    using Message = std::optional<std::string>;
    const auto check = [this](bool wasRunning, double seconds, const Message& own, int cancels, const Message& told) {
        world.channelScan.startCount = world.channelScan.cancelCount = 0;
        world.channelScan.isRunning.set(wasRunning);
        world.channelScan.lastErrorMessage.set(own);
        controller.collect();
        controller.collect();
        loop.advance(0.54 + seconds);
        endTests();
        EXPECT_EQ(world.channelScan.startCount, wasRunning ? 0 : 1) << seconds;
        EXPECT_EQ(world.channelScan.cancelCount, cancels) << seconds;
        EXPECT_EQ(collection.collectedReport.value()->channelScan.errorMessage, told) << seconds;
    };
    check(false, 23, {}, 0, {});
    check(true, 23.9, "Channel scan failed: busy", 0, "Channel scan failed: busy");
    check(false, 24.1, {}, 1, "Channel scan timed out.");
    check(true, 24.1, "own words", 1, "own words");
    collection.collect();
    loop.advance(0.54);
    world.channelScan.isRunning.set(false);
    loop.advance(95.1);
    EXPECT_TRUE(collection.isCollectingReport.value()) << "the speed test began 0.2 s after the scan";
    loop.advance(0.1);
    EXPECT_EQ(collection.collectedReport.value()->speedTest.errorMessage, "Speed test timed out.");
}

TEST_F(DiagnosticsCollectionTest, ActionsSayWhatBecameOfThem) {
    controller.copyReport();
    EXPECT_EQ(shareAndHear(), "Diagnostics report is still being collected.");
    EXPECT_EQ(services.written, "");
    collectAtOnce();
    EXPECT_EQ(controller.content().actionMessage, std::nullopt) << "a collection clears the message";
    EXPECT_EQ(shareAndHear(), "Diagnostics report saved to report.json.");
    controller.copyReport();
    EXPECT_EQ(controller.actionMessage.value(),
              (InlineMessageRow{"Diagnostics report copied to clipboard.", Tone::Green}));
    EXPECT_EQ(services.written, collection.collectedReportJSONString.value());
    services.chosenPath.reset();
    EXPECT_EQ(shareAndHear(), "Diagnostics report copied to clipboard.") << "the user thought better of it";
    services.chosenPath = "/full/report.json";
    services.doesAccept = false;
    EXPECT_EQ(shareAndHear(), "Failed to save diagnostics report.");
    controller.copyReport();
    EXPECT_EQ(controller.actionMessage.value(), (InlineMessageRow{"Unable to copy diagnostics report.", Tone::Red}));
    controller.collect();
    EXPECT_EQ(collection.collectedReportJSONString.value(), std::nullopt) << "the old report is gone at once";
}

TEST_F(DiagnosticsCollectionTest, FileNameHasTheLocalTime) {
    setenv("TZ", "LAB-15", 1);
    tzset();
    EXPECT_EQ(collection.fileName(), "tolvo-diagnostics-20260201-003005.json");
    unsetenv("TZ");
    tzset();
}

TEST_F(DiagnosticsCollectionTest, FallbackTextWhenTheReportCannotBeEncoded) {
    world.connectionErrorMessage.set("\xff");
    collectAtOnce();
    EXPECT_EQ(collection.collectedReportJSONString.value(), "{ \"error\": \"Unable to encode diagnostics export.\" }");
    EXPECT_TRUE(controller.content().ready) << "the report itself stays";
}

TEST_F(DiagnosticsCollectionTest, AWindowMayCloseMeanwhileAndFindsTheReportOnReturn) {
    struct Display final : ContentDisplaying<DiagnosticsExportContent> {
        void show(const DiagnosticsExportContent& content) override { shown = content; }
        DiagnosticsExportContent shown;
    } display;
    controller.open(display);
    EXPECT_TRUE(display.shown.progress);
    controller.close();
    loop.advance(0.6);
    endTests();
    EXPECT_FALSE(display.shown.ready);
    controller.open(display);
    EXPECT_TRUE(display.shown.ready) << "and nothing is collected anew";
    controller.close();
    controller.open(display);
    EXPECT_TRUE(display.shown.progress) << "that report has been seen";
}

TEST(DiagnosticsSharePreviewCard, RowsWithAndWithoutValues) {
    const auto format = [](WallTime) { return std::string("today"); };
    auto input = fullInput();
    input.speedTestResult->uploadMbps = 20.5;
    auto card = diagnosticsSharePreviewCard(makeDiagnosticsExportReport(input), format);
    std::string values;
    for (const auto& metric : card.metrics)
        values += metric.value + "; ";
    EXPECT_EQ(values, "café \"\x01\"\xe2\x80\xae; -50 dBm; 45 dB; 12.2 ms; 0.0 ms; 12; 95 / 21 Mbps; ");
    EXPECT_EQ(card.healthCapsule, (Badge{"POOR", Tone::Orange}));
    EXPECT_EQ(card.footer, "Updated today");
    card = diagnosticsSharePreviewCard(makeDiagnosticsExportReport({}), format);
    EXPECT_EQ(std::ranges::count(card.metrics, "Unavailable", &DiagnosticsCardMetric::value), 7);
}

} // namespace
} // namespace tolvo::testing
