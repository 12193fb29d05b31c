#include "platform/qt/qt_popover.h"
#include "presentation/channel_scan/channel_scan_frame_content.h"
#include "presentation/dashboard/dashboard_frame_content.h"
#include "presentation/menu_bar/status_icon_view.h"
#include "presentation/panel/content_view.h"
#include "presentation/rows/sparkline_view.h"
#include "presentation/rows/symbol_view.h"
#include "presentation/speed_test/speed_test_frame_content.h"
#include "tests/support/eventually.h"
#include "tests/support/manual_loop.h"
#include "tests/support/panel_values.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <gtest/gtest.h>

#include <algorithm>

namespace tolvo::testing {
namespace {

class Views : public ::testing::Test {
protected:
    Views() {
        values.dashboard.latestSnapshot.set(exampleWiFiSnapshot());
        view.resize(400, 650);
        view.setVisible(true);
        values.requests.clear();
    }

    /// What assistive programs find by that name, on the screen; the first.
    template<class Widget = QWidget>
    Widget* named(const QString& name) {
        for (Widget* widget : view.findChildren<Widget*>()) {
            QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(widget);
            if (widget->isVisible() && accessible != nullptr && accessible->text(QAccessible::Name) == name)
                return widget;
        }
        return nullptr;
    }
    std::string describedAs(const char* name) {
        loop.advance(0.1);
        QWidget* widget = named(QString::fromUtf8(name));
        return widget ? widget->accessibleDescription().toStdString() : "(not there)";
    }
    void key(int code, QWidget* widget) {
        QKeyEvent press(QEvent::KeyPress, code, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, code, Qt::NoModifier);
        QCoreApplication::sendEvent(widget, &release);
    }
    bool pressed(const char* name) {
        auto* button = named<QAbstractButton>(QString::fromUtf8(name));
        if (button != nullptr)
            button->click();
        loop.advance(0.1);
        return button != nullptr;
    }
    bool settles(const char* name) {
        return eventually([&] { return named(QString::fromUtf8(name)) != nullptr; });
    }

    ManualLoop loop;
    PanelValues values;
    PanelController controller{loop,
                               {values.dashboard.sources(), values.location, values.connectionHistory},
                               values.settings(),
                               values.actions(),
                               values.formats};
    ContentView view{controller};
};

TEST_F(Views, PaintedRowsCanBeReadByAssistivePrograms) {
    EXPECT_EQ(describedAs("Link Rate"), "866 Mbps");
    EXPECT_EQ(describedAs("Packet Loss"), "—");
    values.dashboard.isRouterIgnored.set(true);
    EXPECT_EQ(describedAs("Router Ping"), "ICMP blocked");
    EXPECT_EQ(describedAs("Open Toolbox"), "") << "its tool tip describes it";
    for (const char* name : {"Good", "Home", "5 GHz", "Show channel details", "Monitoring", "Enabled", "Latency", "DNS",
                             "Location Permission", "Quit", "Live Wi-Fi diagnostics"})
        EXPECT_TRUE(named(QString::fromUtf8(name))) << name;
}

TEST_F(Views, EachControlAsksForWhatItIsFor) {
    EXPECT_TRUE(pressed("Enabled") && pressed("Quit"));
    values.location.set(LocationPermissionStatus::Denied);
    loop.advance(0.1);
    EXPECT_TRUE(pressed("Open Settings")) << "the location's button or the header's";
    values.requests.clear();
    EXPECT_TRUE(settles("Launch at login"));
    EXPECT_TRUE(pressed("Launch at login"));
    EXPECT_TRUE(pressed("Battery friendly"));
    EXPECT_FALSE(values.isBatteryFriendly.value());
    EXPECT_TRUE(pressed("About"));
    EXPECT_EQ(describedAs("Version"), "v1.2 (3)");
    EXPECT_TRUE(pressed("Check for Updates"));
    values.update.set("2.0");
    loop.advance(0.1);
    EXPECT_TRUE(pressed("Download"));
    EXPECT_EQ(values.requests, (std::vector<std::string>{"login item on", "check for update", "download"}));
}

TEST_F(Views, ASwitchShowsTheStateAndNotTheClick) {
    auto* enabled = named<QAbstractButton>(QStringLiteral("Enabled"));
    ASSERT_TRUE(enabled);
    EXPECT_TRUE(enabled->isChecked());
    enabled->click();
    enabled->toggle(); // As an assistive program does it.
    key(Qt::Key_Return, enabled);
    EXPECT_EQ(values.requests, (std::vector<std::string>(3, "monitoring off")));
    EXPECT_TRUE(enabled->isChecked()) << "nobody has turned it off";
    values.dashboard.isMonitoringEnabled.set(false);
    loop.advance(0.1);
    EXPECT_FALSE(enabled->isChecked());
    EXPECT_TRUE(named(QStringLiteral("Monitoring active in background mode.")));
}

TEST_F(Views, TheKeyboardReachesAToolAndComesBack) {
    key(Qt::Key_Return, named(QStringLiteral("Open Toolbox")));
    ASSERT_TRUE(settles("Connection Monitor"));
    ASSERT_TRUE(eventually([&] { return !named(QStringLiteral("Latency")); })) << "what is covered is not read out";
    key(Qt::Key_Space, named(QStringLiteral("Connection Monitor")));
    ASSERT_TRUE(settles("Orphaned"));
    EXPECT_EQ(describedAs("TIME_WAIT"), "—");
    key(Qt::Key_Escape, &view);
    ASSERT_TRUE(settles("Diagnostics Export"));
    EXPECT_TRUE(pressed("Back to Main"));
    EXPECT_TRUE(settles("Latency"));
    key(Qt::Key_Escape, &view);
    EXPECT_EQ(controller.activePanel(), PanelRoute::Dashboard);
}

TEST_F(Views, NamesFromTheAirAreNoMarkupAndMakeNoPanelWider) {
    WiFiSnapshot snapshot = exampleWiFiSnapshot();
    snapshot.ssid = "<b>" + std::string(300, 'W') + "</b>";
    values.dashboard.latestSnapshot.set(snapshot);
    values.dashboard.captivePortalStatus.set(CaptivePortalStatus{
        {}, true, URL::parse("http://a/" + std::string(3000, 'x')), {}, CaptivePortalDetectionReason::Redirect});
    controller.openPanel(PanelRoute::CaptivePortal);
    loop.advance(0.1);
    QCoreApplication::processEvents();
    EXPECT_LE(view.minimumSizeHint().width(), 400);
    for (const QWidget* widget : view.findChildren<QWidget*>()) {
        EXPECT_LE(widget->width(), 400) << widget->accessibleName().toStdString();
        EXPECT_FALSE(widget->toolTip().contains("<b>"));
    }
}

TEST_F(Views, LargeTypeMakesNoPanelWider) {
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2.2);
    QApplication::setFont(large);
    values.dashboard.healthState.set(HealthState::Disconnected);
    ContentView panel(controller);
    QApplication::setFont(usual);
    panel.resize(400, 650);
    panel.setVisible(true);
    for (const PanelRoute route : {PanelRoute::Dashboard, PanelRoute::Settings, PanelRoute::Toolbox}) {
        controller.openPanel(route);
        QCoreApplication::processEvents();
        for (const QScrollArea* area : panel.findChildren<QScrollArea*>())
            EXPECT_TRUE(!area->isVisible() || area->widget()->width() <= area->viewport()->width())
                << static_cast<int>(route);
    }
}

TEST(StatusIcon, HangsTheBadgeAtTheLowerRightAtEachScale) {
    PanelShade shade = PanelShade::Dark;
    StatusIconView icon([&] { return shade; });
    const auto image = icon.render({"pause.circle.fill", Tone::Red, ""});
    ASSERT_TRUE(image);
    ASSERT_EQ(image->size(), 3U);
    for (const RasterImage& one : *image) {
        EXPECT_EQ(one.width, one.height);
        const int scale = one.width / 18;
        const auto pixel = [&](double x, double y) {
            const int column = static_cast<int>(x * scale);
            const int row = static_cast<int>(y * scale);
            return QColor::fromRgba(one.pixels[static_cast<std::size_t>(row * one.width + column)]);
        };
        EXPECT_GT(pixel(13.5, 10.5).red(), 200) << "inside the badge";
        EXPECT_GT(pixel(13.5, 17.4).alpha(), 60) << "down to the canvas's edge";
        EXPECT_LT(pixel(17.4, 8.9).alpha(), 60) << "the badge is round";
        EXPECT_LT(pixel(3, 17.4).alpha(), 60);
    }
    const StatusIconContent plain{"pause.circle.fill", Tone::Primary, ""};
    const auto dark = icon.render(plain);
    shade = PanelShade::Light;
    EXPECT_NE(icon.render(plain), dark);
    EXPECT_FALSE(icon.render({"no.such.symbol", Tone::Red, ""}));
}

TEST(Symbols, EveryNamedOneIsThere) {
    std::vector<std::string_view> names{"wifi",
                                        "info.circle",
                                        "chevron.left",
                                        "chevron.right",
                                        "slider.horizontal.3",
                                        "exclamationmark.triangle.fill",
                                        "arrow.down.circle.fill",
                                        "arrow.down",
                                        "arrow.up",
                                        speedTestFrameContent.window.symbolName,
                                        channelScanFrameContent.window.symbolName,
                                        "arrow.forward.circle.fill",
                                        "arrow.uturn.backward.circle.fill"};
    for (const ToolboxToolRow& row : toolboxRows())
        names.push_back(row.symbolName);
    for (const HealthState state :
         {HealthState::Good, HealthState::Warning, HealthState::Poor, HealthState::Disconnected})
        EXPECT_TRUE(hasSymbol(statusIconContent(state, true).badgeSymbolName));
    for (const HeaderIconButton& button : dashboardFrameContent.headerButtons)
        names.push_back(button.symbolName);
    for (const std::string_view name : names)
        EXPECT_TRUE(hasSymbol(name)) << name;
}

TEST(Sparkline, DrawsTheLineOverAPalerArea) {
    QImage canvas(100, 40, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    paintSparkline(painter, canvas.rect(), std::vector<double>{5, 5}, ValueRange{0, 10}, Qt::red);
    painter.end();
    EXPECT_GT(qAlpha(canvas.pixel(50, 19)), 200);
    EXPECT_NEAR(qAlpha(canvas.pixel(50, 30)), 51, 3);
    EXPECT_EQ(qAlpha(canvas.pixel(50, 8)), 0);
}

TEST(Popover, BuildsItsContentOnceAndTellsEveryClosing) {
    int built = 0;
    int closed = 0;
    QtPopover popover(nullptr, [&] {
        ++built;
        return std::make_unique<QWidget>();
    });
    popover.onDidClose = [&] { ++closed; };
    popover.setContentSize({400, 650});
    popover.close();
    EXPECT_EQ(built + closed, 0) << "nothing is built before it is opened";
    popover.show(ScreenRect{700, 0, 20, 20});
    EXPECT_TRUE(popover.isShown());
    popover.setContentSize({400, 430});
    popover.close();
    popover.close();
    popover.show(std::nullopt);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto window = std::ranges::find_if(windows, [](const QWidget* widget) { return widget->isVisible(); });
    ASSERT_NE(window, windows.end());
    EXPECT_EQ((*window)->size(), QSize(400, 430));
    (*window)->close(); // By the desktop's own button.
    EXPECT_EQ(built, 1);
    EXPECT_EQ(closed, 2);
}

} // namespace
} // namespace tolvo::testing
