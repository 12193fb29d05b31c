#include "presentation/menu_bar/menu_bar_controller.h"
#include "tests/support/recording_desktop.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

struct ScriptedIconSettings final : ColorfulIconSettingsProviding {
    bool colorfulIconEnabled() const override { return isColorful; }
    bool isColorful = true;
};

struct RecordingIconRendering final : StatusIconRendering {
    std::optional<ScaledImage> render(const StatusIconContent& content) override {
        contents.push_back(content);
        return canDraw ? std::optional(ScaledImage{RasterImage{1, 1, {0xFF000000}}}) : std::nullopt;
    }
    std::vector<StatusIconContent> contents;
    bool canDraw = true;
};

class MenuBar : public ::testing::Test {
protected:
    using Log = DesktopLog;

    Log takeLog() { return std::exchange(log, {}); }
    void openPopover() {
        controller.installStatusItem();
        item.onHostChange(true);
        item.onActivate(place);
        log.clear();
    }

    Log log;
    RecordingStatusItem item{log};
    RecordingPopover popover{log};
    ManualClickMonitor clicks;
    RecordingToolWindows toolWindows{log};
    RecordingIconRendering rendering;
    ScriptedIconSettings settings;
    Published<bool> isMonitoringEnabled{true};
    Published<HealthState> health{HealthState::Good};
    const ScreenRect place{1200, 0, 24, 24};
    MenuBarController controller{
        {item, popover, clicks, toolWindows, rendering},
        {isMonitoringEnabled, health, settings},
        {[this] { log.push_back("location refreshed"); },
         [this](bool isPresented) { log.push_back(isPresented ? "presented" : "not presented"); },
         [this] { log.push_back("interval applied"); }, [this] { log.push_back("monitors refreshed"); },
         [this] { log.push_back("terminated"); }}};
};

TEST_F(MenuBar, InstallsOnceAndFollowsTheHealthAsItChanges) {
    health.set(HealthState::Poor);
    EXPECT_TRUE(rendering.contents.empty()) << "nothing is drawn without an item";
    controller.installStatusItem();
    controller.installStatusItem();
    EXPECT_EQ(takeLog(), (Log{"tool tip Tolvo", "item installed"}));
    health.set(HealthState::Warning);
    isMonitoringEnabled.set(false);
    std::vector<std::string> symbols;
    for (const StatusIconContent& content : rendering.contents)
        symbols.push_back(content.badgeSymbolName);
    EXPECT_EQ(symbols, (std::vector<std::string>{"xmark.circle.fill", "exclamationmark.circle.fill",
                                                 "exclamationmark.circle.fill"}))
        << "the new state is drawn, not the one before it";
    rendering.canDraw = false;
    health.set(HealthState::Good);
    EXPECT_EQ(item.images.size(), 3U) << "without an image the item keeps its own";
}

TEST_F(MenuBar, OpensThePopoverInOrderAndClosesItOnTheSecondClick) {
    controller.installStatusItem();
    item.onHostChange(true);
    log.clear();
    item.onActivate(place);
    EXPECT_EQ(takeLog(),
              (Log{"location refreshed", "popover shown", "presented", "interval applied", "monitors refreshed"}));
    EXPECT_EQ(popover.place, place);
    item.onActivate(place);
    EXPECT_EQ(takeLog(), (Log{"popover closed", "not presented", "interval applied"})) << "closing asks for no poll";
    EXPECT_FALSE(clicks.clickOutside || clicks.clickInside);
}

TEST_F(MenuBar, ClosesForClicksThatAreNotItsOwn) {
    openPopover();
    clicks.click(ClickedWindow::Popover);
    clicks.click(ClickedWindow::StatusItem);
    EXPECT_EQ(takeLog(), Log{}) << "the item's own click is the toggle's";
    clicks.click(ClickedWindow::Other);
    EXPECT_EQ(takeLog(), (Log{"popover closed", "not presented", "interval applied"}));
    item.onActivate(place);
    const auto clickOutside = clicks.clickOutside;
    clickOutside();
    EXPECT_FALSE(popover.isOpen);
    log.clear();
    clickOutside(); // One that was held back while the toggle closed the popover.
    EXPECT_EQ(takeLog(), Log{});
}

TEST_F(MenuBar, LimitsTheHeightAndIgnoresSmallDifferences) {
    EXPECT_EQ(popover.size, (ContentSize{400, 650}));
    struct Row {
        double wanted;
        double height;
        bool isChange;
    };
    for (const Row& row : {Row{900, 700, true}, Row{699.5, 700, false}, Row{699.4, 699.4, true}, Row{100, 320, true},
                           Row{320.5, 320, false}, Row{430, 430, true}}) {
        const int before = popover.sizeChanges;
        controller.setPreferredPopoverHeight(row.wanted);
        EXPECT_EQ(popover.size, (ContentSize{400, row.height})) << row.wanted;
        EXPECT_EQ(popover.sizeChanges - before, row.isChange ? 1 : 0) << row.wanted;
    }
}

TEST_F(MenuBar, BuildsAToolWindowOnceAndClosesThePopoverForIt) {
    openPopover();
    controller.openToolWindow(ToolWindowKind::SpeedTest);
    EXPECT_EQ(takeLog(), (Log{"built Speed Test", "frame of tolvo.speedTest.windowFrame", "centred",
                              "autosave tolvo.speedTest.windowFrame", "popover closed", "not presented",
                              "interval applied", "in front"}));
    controller.openToolWindow(ToolWindowKind::SpeedTest);
    EXPECT_EQ(takeLog(), Log{"in front"});
    toolWindows.hasSavedFrames = true;
    controller.openToolWindow(ToolWindowKind::WiFiRadar);
    EXPECT_EQ(takeLog(), (Log{"built Wi-Fi Radar", "frame of tolvo.wifiRadar.windowFrame",
                              "autosave tolvo.wifiRadar.windowFrame", "in front"}));
}

TEST_F(MenuBar, WithoutAHostItIsAWindowThatEndsTheProgram) {
    controller.installStatusItem();
    log.clear();
    item.onHostChange(false);
    EXPECT_EQ(log[1], "window shown");
    EXPECT_FALSE(clicks.clickOutside) << "an ordinary window stays when one clicks elsewhere";
    controller.openToolWindow(ToolWindowKind::ChannelScan);
    EXPECT_TRUE(popover.isOpen);
    popover.close();
    EXPECT_EQ(log.back(), "terminated");
}

TEST_F(MenuBar, AHostThatComesLaterTakesTheEndFromTheWindow) {
    controller.installStatusItem();
    item.onHostChange(false);
    item.onHostChange(true);
    log.clear();
    popover.close();
    EXPECT_EQ(takeLog(), (Log{"popover closed", "not presented", "interval applied"}));
    item.onHostChange(false);
    EXPECT_EQ(takeLog(), Log{}) << "a panel that restarts opens no window";
    controller.presentPopover();
    EXPECT_EQ(log[1], "window shown") << "nothing on the screen would bring it back";
    controller.presentPopover();
    EXPECT_EQ(log.back(), "popover in front") << "it may be hidden behind other windows";
}

TEST_F(MenuBar, TearsDownWithoutEndingTheProgramAgain) {
    controller.removeStatusItem();
    EXPECT_EQ(takeLog(), Log{}) << "nothing was installed";
    controller.installStatusItem();
    item.onHostChange(false);
    log.clear();
    controller.removeStatusItem();
    EXPECT_EQ(takeLog(), (Log{"popover closed", "not presented", "interval applied", "item removed"}));
    item.onActivate(place);
    EXPECT_FALSE(popover.isOpen);
}

TEST(StatusIconContent, PlainIconKeepsTheSymbolInTheLabelsColour) {
    const std::pair<HealthState, std::pair<std::string, Tone>> rows[] = {
        {HealthState::Good, {"checkmark.circle.fill", Tone::Green}},
        {HealthState::Warning, {"exclamationmark.circle.fill", Tone::Orange}},
        {HealthState::Poor, {"xmark.circle.fill", Tone::Red}},
        {HealthState::Disconnected, {"pause.circle.fill", Tone::Gray}},
    };
    for (const auto& [state, badge] : rows) {
        const std::string description = "Tolvo status " + std::string(rawValue(state));
        EXPECT_EQ(statusIconContent(state, true), (StatusIconContent{badge.first, badge.second, description}));
        EXPECT_EQ(statusIconContent(state, false), (StatusIconContent{badge.first, Tone::Primary, description}));
    }
}

} // namespace
} // namespace tolvo::testing
