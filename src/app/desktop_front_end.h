#pragma once

#include "app/app_delegate.h"
#include "app/front_end.h"
#include "core/colorful_icon_settings_providing.h"
#include "platform/linux/atomic_file_writer.h"
#include "platform/qt/qt_appearance.h"
#include "platform/qt/qt_click_monitor.h"
#include "platform/qt/qt_clipboard.h"
#include "platform/qt/qt_locale_formats.h"
#include "platform/qt/qt_main_loop.h"
#include "platform/qt/qt_popover.h"
#include "platform/qt/qt_save_dialog.h"
#include "platform/qt/qt_status_item.h"
#include "platform/qt/qt_tool_window.h"
#include "platform/qt/session_bus.h"
#include "platform/qt/window_frame_store.h"
#include "platform/qt/x11_root_events.h"
#include "presentation/channel_scan/channel_scan_controller.h"
#include "presentation/diagnostics_export/diagnostics_export_controller.h"
#include "presentation/menu_bar/menu_bar_controller.h"
#include "presentation/menu_bar/status_icon_view.h"
#include "presentation/panel/panel_controller.h"
#include "presentation/speed_test/speed_test_controller.h"
#include "presentation/wifi_radar/wifi_radar_controller.h"

#include <memory>
#include <optional>

namespace tolvo {

/// The face on a desktop: the status item, the popover and the tool windows.
class DesktopFrontEnd final : public FrontEnd {
public:
    /// A fixed scheme is kept whatever the desktop says.
    DesktopFrontEnd(AppDelegate& delegate, QtMainLoop& loop, std::optional<ColorScheme> fixedScheme);
    ~DesktopFrontEnd() override;

    void install() override;
    void remove() override;
    /// Brings the popover up, as a second start of the program asks for.
    void present() { menuBar_.presentPopover(); }

private:
    PanelSources panelSources();
    PanelActions panelActions();
    SettingsSources settingsSources();
    MenuBarActions menuBarActions();
    std::map<ToolWindowKind, QtToolWindowFactory::ContentMaker> toolWindowContents();

    AppDelegate& delegate_;
    QtMainLoop& loop_;
    SessionBus bus_;
    QtAppearance appearance_;
    std::unique_ptr<X11RootEvents> rootEvents_;
    QtLocaleFormats formats_;
    WindowFrameStore frames_;
    UserDefaultsColorfulIconSettingsProvider colorfulIconSettingsProvider_;
    QtClipboard clipboard_;
    QtSaveDialog saveDialog_;
    AtomicFileWriter fileWriter_;
    DiagnosticsExportController exportController_;
    SpeedTestController speedTestController_;
    ChannelScanController channelScanController_;
    WiFiRadarController radarController_;
    PanelController panel_;
    QtStatusItem statusItem_;
    QtPopover popover_;
    QtClickMonitor clickMonitor_;
    QtToolWindowFactory toolWindows_;
    StatusIconView statusIcon_;
    MenuBarController menuBar_;
};

} // namespace tolvo
