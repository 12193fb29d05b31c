#include "presentation/panel/panel_controller.h"
#include "tests/support/manual_loop.h"
#include "tests/support/panel_values.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

struct RecordingDisplay final : PanelDisplaying {
    void show(const PanelContent& content) override { shown.push_back(content); }
    std::vector<PanelContent> shown;
};

class Panel : public ::testing::Test {
protected:
    using Requests = std::vector<std::string>;

    Requests takeRequests() { return std::exchange(values.requests, {}); }
    const PanelContent& latest() {
        loop.advance(0.1);
        return display.shown.back();
    }

    ManualLoop loop;
    PanelValues values;
    RecordingDisplay display;
    PanelController controller{loop,
                               {values.dashboard.sources(), values.location, values.connectionHistory},
                               values.settings(),
                               values.actions(),
                               values.formats};
};

TEST_F(Panel, ShowsChangesTogetherAndOnlyWhileOnScreen) {
    values.dashboard.isConnected.set(false);
    EXPECT_EQ(loop.timerCount(), 0U) << "a closed popover wakes nobody";
    controller.setDisplay(&display);
    EXPECT_EQ(display.shown.size(), 1U);
    values.dashboard.isConnected.set(true);
    values.dashboard.latestSnapshot.set(exampleWiFiSnapshot());
    values.connectionHistory.set({ConnectionPressureResult{}});
    values.location.set(LocationPermissionStatus::Denied);
    values.update.set("2.0");
    loop.advance(0.1);
    ASSERT_EQ(display.shown.size(), 2U);
    EXPECT_EQ(latest().dashboard.network.name, "Home");
    EXPECT_EQ(latest().location.button, "Open Settings");
    EXPECT_EQ(latest().connection.rows[0].samples.size(), 1U);
    EXPECT_TRUE(latest().settings.about.update);
    values.dashboard.isConnected.set(false);
    controller.setDisplay(nullptr);
    loop.advance(1);
    EXPECT_EQ(display.shown.size(), 2U);
}

TEST_F(Panel, EachRouteAsksForItsHeightAndTheRouteStays) {
    controller.setDisplay(&display);
    controller.openPanel(PanelRoute::Settings);
    controller.openPanel(PanelRoute::Settings);
    controller.goBack();
    controller.goBack();
    controller.openPanel(PanelRoute::Toolbox);
    controller.performToolboxAction(ToolboxAction::OpenConnectionMonitor);
    controller.goBack();
    controller.performToolboxAction(ToolboxAction::OpenCaptivePortal);
    EXPECT_EQ(takeRequests(), (Requests{"height 650", "height 560", "height 650", "height 650", "height 430",
                                        "height 650", "height 430"}));
    controller.setDisplay(nullptr);
    controller.setDisplay(&display);
    EXPECT_EQ(latest().route, PanelRoute::CaptivePortal) << "closing the popover keeps its panel";
    EXPECT_EQ(takeRequests(), Requests{"height 430"});
}

TEST_F(Panel, EachToolOpensWhatItsRowSays) {
    std::string opened;
    for (const ToolboxToolRow& row : toolboxRows()) {
        controller.openPanel(PanelRoute::Toolbox);
        values.requests.clear();
        controller.performToolboxAction(row.action);
        opened += std::string(row.title) + ": " + values.requests.front() + "\n";
    }
    EXPECT_EQ(opened, "Wi-Fi Radar: radar\nChannel Scan: channel scan\nSpeed Test: speed test\n"
                      "Connection Monitor: height 430\nCaptive Portal: height 430\nDiagnostics Export: export\n");
}

TEST_F(Panel, LoginItemShowsTheSystemsStateAndTheLastFailure) {
    controller.setDisplay(&display);
    controller.settings().setLaunchAtLogin(true);
    EXPECT_TRUE(latest().settings.general.launchAtLogin.isOn);
    values.loginItemError = "Failed to update login item: read-only";
    controller.settings().setLaunchAtLogin(false);
    EXPECT_TRUE(latest().settings.general.launchAtLogin.isOn);
    EXPECT_EQ(latest().settings.general.launchAtLoginError, values.loginItemError);
    values.loginItemError.reset();
    controller.settings().setLaunchAtLogin(false);
    EXPECT_EQ(latest().settings.general.launchAtLoginError, std::nullopt);
    EXPECT_FALSE(latest().settings.general.approval);
    values.requiresApproval.set(true);
    EXPECT_EQ(latest().settings.general.approval->text, "Approval needed in System Settings.");
    values.isBatteryFriendly.set(false);
    EXPECT_EQ(latest().settings.general.batteryFriendly.stateLabel, "Always Fast");
}

TEST_F(Panel, ChecksForUpdatesOneAtATime) {
    controller.setDisplay(&display);
    controller.settings().selectTab(SettingsOverlayTab::About);
    controller.settings().checkForUpdates();
    controller.settings().checkForUpdates();
    EXPECT_TRUE(latest().settings.about.isChecking);
    EXPECT_EQ(std::ranges::count(values.requests, "check for update"), 1);
    values.update.set("1.4.0");
    values.updateCheckEnds.notify();
    EXPECT_FALSE(latest().settings.about.isChecking);
    EXPECT_EQ(latest().settings.about.update,
              (SettingsNotice{"arrow.down.circle.fill", Tone::Blue, "Update available: 1.4.0", "Download"}));
    EXPECT_EQ(latest().settings.selectedTab, SettingsOverlayTab::About);
    controller.settings().checkForUpdates();
    EXPECT_TRUE(latest().settings.about.isChecking);
}

} // namespace
} // namespace tolvo::testing
