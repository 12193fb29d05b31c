#pragma once

#include "app/app_delegate.h"
#include "app/front_end.h"
#include "platform/linux/atomic_file_writer.h"
#include "platform/services/save_dialog.h"
#include "platform/services/text_terminal.h"
#include "presentation/diagnostics_export/diagnostics_export_controller.h"
#include "presentation/terminal/channel_scan_page.h"
#include "presentation/terminal/json_line_content.h"
#include "presentation/terminal/monitor_page.h"
#include "presentation/terminal/report_page.h"
#include "presentation/terminal/speed_test_page.h"
#include "presentation/terminal/terminal_controller.h"
#include "presentation/terminal/wifi_radar_page.h"

#include <functional>

namespace tolvo {

/// Where a terminal program saves: in the folder that it was started in.
class CurrentFolderSaveDialog final : public SaveDialog {
public:
    CurrentFolderSaveDialog() = default;
    Task<std::optional<std::filesystem::path>> runSaveDialog(SaveDialogRequest request) override;
};

/// A terminal has no clipboard of ours.
class NoClipboard final : public Clipboard {
public:
    NoClipboard() = default;
    bool setText(const std::string&) override { return false; }
};

/// The terminal's screen with its pages.
class TerminalScreenFrontEnd final : public FrontEnd {
public:
    TerminalScreenFrontEnd(AppDelegate& delegate, TextTerminal& terminal, std::function<void()> onQuit);

    /// Whoever looks at the screen counts as one who has the popover open.
    void install() override;
    void remove() override;
    void redraw() { controller_.redraw(); }
    /// Around a stop of the job: the terminal is the shell's meanwhile.
    void leaveScreen() { controller_.leaveScreen(); }
    void enterScreen() { controller_.enterScreen(); }

private:
    MonitoringLifecycleController& lifecycle_;
    MonitorPage monitorPage_;
    SpeedTestPage speedTestPage_;
    ChannelScanPage channelScanPage_;
    WiFiRadarPage radarPage_;
    NoClipboard clipboard_;
    CurrentFolderSaveDialog saveDialog_;
    AtomicFileWriter fileWriter_;
    DiagnosticsExportController exportController_;
    ReportPage reportPage_;
    TerminalController controller_;
};

/// One JSON object a line each second, where the output is no terminal.
class JSONLinesFrontEnd final : public FrontEnd {
public:
    JSONLinesFrontEnd(AppDelegate& delegate, TextTerminal& output, std::function<void()> onQuit);

    void install() override;
    void remove() override { timer_.reset(); }

private:
    void writeLine();

    SystemServices& system_;
    JSONLineContent content_;
    TextTerminal& output_;
    std::function<void()> onQuit_;
    LoopRegistration timer_;
};

} // namespace tolvo
