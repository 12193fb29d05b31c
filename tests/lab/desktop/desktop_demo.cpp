// The desktop's face over simulated values. DEMO_SCENE names the network's state, DEMO_SCHEME is "light" or "dark",
// DEMO_COLORFUL=1 colours the icon's badge, DEMO_FONT is the type's size in points, DEMO_RTL=1 reads from right to
// left.

#include "core/task_sleeper.h"
#include "platform/qt/qt_appearance.h"
#include "platform/qt/qt_click_monitor.h"
#include "platform/qt/qt_locale_formats.h"
#include "platform/qt/qt_main_loop.h"
#include "platform/qt/qt_popover.h"
#include "platform/qt/qt_status_item.h"
#include "platform/qt/qt_tool_window.h"
#include "presentation/menu_bar/menu_bar_controller.h"
#include "presentation/menu_bar/status_icon_view.h"
#include "presentation/panel/content_view.h"
#include "presentation/panel/panel_controller.h"
#include "tests/lab/desktop/simulated_network.h"

#include <QApplication>

#include <iostream>

namespace tolvo::testing {
namespace {

struct DemoIconSettings final : ColorfulIconSettingsProviding {
    bool colorfulIconEnabled() const override { return qEnvironmentVariableIntValue("DEMO_COLORFUL") == 1; }
};

/// The settings' values, changed by nothing but the panel.
struct DemoSettings {
    Published<bool> isBatteryFriendly{true};
    Published<bool> isLoginItem{false};
    Published<bool> requiresApproval{qEnvironmentVariableIntValue("DEMO_APPROVAL") == 1};
    Published<std::optional<std::string>> update;
    TaskSleeper sleeper;

    Task<void> check() {
        co_await sleeper.sleep(1.5);
        update.set("1.4.0");
    }

    SettingsSources sources(const LocaleFormats& formats) {
        const BundleBuildFacts facts{"1.3.2", "118", "a1b2c3d", "2026-01-31", std::nullopt};
        return {isBatteryFriendly,
                [this](bool isOn) { isBatteryFriendly.set(isOn); },
                {isLoginItem, requiresApproval,
                 [this](bool isOn) -> std::expected<void, std::string> {
                     isLoginItem.set(isOn);
                     return {};
                 },
                 [] {}},
                {[this] { return update.value(); },
                 [this](std::function<void()> onChange) {
                     return update.subscribe([onChange](const auto&) { onChange(); });
                 },
                 [this] { return check(); }, [] {}},
                appBuildMetadataDisplayInfo(facts, formats)};
    }
};

int run(QApplication& application) {
    QtMainLoop loop;
    SessionBus bus(loop);
    QtAppearance appearance(bus, qEnvironmentVariable("DEMO_SCHEME") == QStringLiteral("dark")
                                     ? std::optional(ColorScheme::Dark)
                                     : std::nullopt);
    const auto rootEvents = X11RootEvents::create(loop);
    const QtLocaleFormats formats;
    SimulatedNetwork network(loop, qEnvironmentVariable("DEMO_SCENE", QStringLiteral("good")).toStdString());
    Published<LocationPermissionStatus> location{LocationPermissionStatus::Authorized};
    DemoSettings settings;
    const DemoIconSettings iconSettings;

    MenuBarController* menuBar = nullptr;
    PanelController panel(loop, {network.sources(), location, network.connectionHistory}, settings.sources(formats),
                          {[&](bool isOn) { network.setMonitoringEnabled(isOn); },
                           [&] { location.set(LocationPermissionStatus::Authorized); },
                           [&](double height) { menuBar->setPreferredPopoverHeight(height); },
                           [&](ToolWindowKind kind) { menuBar->openToolWindow(kind); }, [&] { loop.quit(); }},
                          formats);
    QtStatusItem statusItem(loop, bus, rootEvents.get());
    QtPopover popover(rootEvents.get(), [&] { return std::make_unique<ContentView>(panel); });
    QtClickMonitor clickMonitor(loop, rootEvents.get(), popover);
    WindowFrameStore frames(WindowFrameStore::userPath());
    QtToolWindowFactory toolWindows(loop, frames, {});
    StatusIconView icon(
        [&] { return appearance.panelColorScheme() == ColorScheme::Dark ? PanelShade::Dark : PanelShade::Light; });
    MenuBarController controller({statusItem, popover, clickMonitor, toolWindows, icon},
                                 {network.values.isMonitoringEnabled, network.values.healthState, iconSettings},
                                 {[] {},
                                  [](bool isPresented) { std::cout << "presented " << isPresented << std::endl; },
                                  [] {}, [] {}, [&] { loop.quit(); }});
    menuBar = &controller;
    appearance.onChange = [&] { controller.refreshStatusIcon(); };
    controller.installStatusItem();
    bus.connect();
    application.setQuitOnLastWindowClosed(false);
    const int status = loop.run();
    controller.removeStatusItem();
    return status;
}

} // namespace
} // namespace tolvo::testing

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QApplication::setApplicationName(QStringLiteral("tolvo"));
    QApplication::setDesktopFileName(QStringLiteral("tolvo"));
    QApplication::setStyle(QStringLiteral("Fusion"));
    if (const int points = qEnvironmentVariableIntValue("DEMO_FONT"); points > 0) {
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }
    if (qEnvironmentVariableIntValue("DEMO_RTL") == 1)
        QApplication::setLayoutDirection(Qt::RightToLeft);
    return tolvo::testing::run(application);
}
