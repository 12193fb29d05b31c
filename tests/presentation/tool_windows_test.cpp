#include "core/task_sleeper.h"
#include "presentation/channel_scan/channel_scan_view.h"
#include "presentation/diagnostics_export/diagnostics_export_view.h"
#include "presentation/speed_test/speed_test_view.h"
#include "presentation/wifi_radar/radar_nearby_list_view.h"
#include "presentation/wifi_radar/wifi_radar_view.h"
#include "tests/support/dashboard_values.h"
#include "tests/support/manual_loop.h"
#include "tests/support/panel_values.h"
#include "tests/support/scripted_export.h"
#include "tests/support/speed_test_values.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tolvo::testing {
namespace {

/// The texts and values that are on the screen, by name.
std::map<std::string, std::string> shownIn(const QWidget& window) {
    std::map<std::string, std::string> shown;
    for (const QLabel* label : window.findChildren<QLabel*>()) {
        if (label->isVisible())
            shown[(label->accessibleName().isEmpty() ? label->text() : label->accessibleName()).toStdString()] =
                label->accessibleDescription().toStdString();
    }
    return shown;
}

TEST(SpeedTestView, KeepsTheKeyboardOnItsButtonAndShowsOnReturnWhatCameMeanwhile) {
    ManualLoop loop;
    const FixedLocaleFormats formats;
    SpeedTestValues test;
    SpeedTestController controller(loop, test.sources,
                                   {[&] { test.isRunning.set(true); }, [&] { test.isRunning.set(false); }}, "Home", "",
                                   formats);
    SpeedTestView view(controller);
    view.setVisible(true);
    auto* button = view.findChild<QAbstractButton*>();
    button->setFocus();
    button->click();
    loop.advance(0.1);
    EXPECT_EQ(button->text(), QStringLiteral("Cancel"));
    EXPECT_TRUE(view.focusWidget() == button && button->isVisible());
    EXPECT_EQ(shownIn(view).count("No speed test results yet"), 0U);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
    QCoreApplication::sendEvent(button, &letter);
    EXPECT_FALSE(letter.isAccepted()) << "nobody wants it";
    view.setVisible(false);
    test.downloadGrade.set(BufferbloatGrade::C);
    test.download.set(12.34);
    button->click();
    loop.advance(0.1);
    view.setVisible(true);
    EXPECT_EQ(button->text(), QStringLiteral("Run Test"));
    EXPECT_EQ(shownIn(view).at("Download"), "12.3 Mbps");
    EXPECT_EQ(shownIn(view).at("Download bufferbloat"), "C, ratio unavailable");
}

TEST(ChannelScanView, ShowsTheChannelsOfTheLatestResultOnly) {
    ManualLoop loop;
    const FixedLocaleFormats formats;
    Published<std::optional<ChannelScanResult>> latestResult;
    Published<bool> isScanning{false};
    Published<std::int64_t> completedPasses{0};
    Published<std::int64_t> totalPasses{0};
    ChannelScanController controller(
        loop, {latestResult, isScanning, completedPasses, totalPasses}, [&] { isScanning.set(true); }, formats);
    ChannelScanView view(controller);
    view.setVisible(true);
    EXPECT_TRUE(shownIn(view).contains("No scan results yet"));
    ChannelScanResult result;
    result.currentBand = WiFiBand::FiveGigahertz;
    result.currentChannelNumber = 40;
    for (std::int64_t channel : {36, 40, 44})
        result.channels.push_back({channel, WiFiBand::FiveGigahertz, 1, -60, 0.5, 1});
    latestResult.set(result);
    loop.advance(0.1);
    EXPECT_EQ(shownIn(view).at("Ch 40"), "Current, Score 0.50, 1 network");
    EXPECT_TRUE(shownIn(view).contains("Ch 44"));
    result.channels.resize(2);
    latestResult.set(result);
    view.findChild<QAbstractButton*>()->click();
    loop.advance(0.1);
    EXPECT_FALSE(shownIn(view).contains("Ch 44"));
    EXPECT_EQ(view.findChild<QAbstractButton*>()->text(), QStringLiteral("Cancel"));
}

TEST(WiFiRadarView, ReadsAndTurnsWhileItIsOpenAndTakesAnyName) {
    ManualLoop loop;
    Published<std::optional<WiFiSnapshot>> snapshot{exampleWiFiSnapshot()}, fallback;
    Published<std::vector<WiFiSnapshot>> history, fallbackHistory;
    Published<std::vector<RadarNearbyNetwork>> nearby;
    Published<std::optional<std::string>> errorMessage;
    std::string log;
    WiFiRadarController controller(loop, {snapshot, history, fallback, fallbackHistory, nearby, errorMessage},
                                   {[&] { log += "started "; }, [&] { log += "stopped "; }});
    auto view = std::make_unique<WiFiRadarView>(controller);
    view->resize(1080, 680);
    view->setVisible(true);
    EXPECT_EQ(shownIn(*view).at("Signal quality"), "80. Good spot: signal is stable.");
    EXPECT_EQ(shownIn(*view).at("SNR"), "40 dB");
    auto* list = view->findChild<RadarNearbyListView*>();
    const RadarNearbyNetwork odd{"1", std::string(300, 'W') + "<b>\u202E", -60, 6, WiFiBand::Unknown};
    nearby.set(std::vector<RadarNearbyNetwork>(500, odd));
    loop.advance(0.6);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->model()->rowCount(), 500);
    EXPECT_LE(view->widget()->width(), 1080);
    EXPECT_FALSE(shownIn(*view).contains("Scanning nearby networks..."));
    EXPECT_NEAR(controller.sweepDegrees(), radarSweepDegrees(0.6), 1e-6);
    view->setVisible(false);
    view->setVisible(true);
    EXPECT_EQ(controller.sweepDegrees(), -90) << "a new sweep";
    nearby.set({});
    view.reset();
    loop.advance(0.1);
    EXPECT_EQ(log, "started stopped started stopped ");
}

TEST(DiagnosticsExportView, LetsTheReaderSelectWhatItCollected) {
    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedCollectionSources world;
    ScriptedExportServices services;
    DiagnosticsCollection collection(loop, world.sources(), sleeper, [] { return WallTime(); });
    DiagnosticsExportController controller(loop, collection, services, services, services,
                                           [](WallTime) { return std::string("today"); });
    DiagnosticsExportView view(controller);
    const auto press = [&](const char* name) {
        for (auto* button : view.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->accessibleName() == QLatin1String(name))
                button->click();
        }
        loop.advance(0.6);
    };
    view.setVisible(true);
    press("Copy report");
    EXPECT_EQ(shownIn(view).at("Collecting latency metrics"), "Completed");
    EXPECT_EQ(shownIn(view).at("Running speed test"), "Pending");
    EXPECT_TRUE(shownIn(view).contains("Diagnostics report is still being collected."));
    world.channelScan.isRunning.set(false);
    loop.advance(0.3);
    world.speedTest.isRunning.set(false);
    loop.advance(0.3);
    EXPECT_EQ(shownIn(view).at("Internet Ping"), "Unavailable");
    EXPECT_EQ(view.findChild<QPlainTextEdit*>()->toPlainText().toStdString(),
              *collection.collectedReportJSONString.value());
    press("Share report");
    EXPECT_TRUE(shownIn(view).contains("Diagnostics report saved to report.json."));
    press("Regenerate");
    EXPECT_EQ(shownIn(view).at("Running speed test"), "Pending");
}

} // namespace
} // namespace tolvo::testing
