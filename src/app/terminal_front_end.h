#pragma once

#include "app/app_delegate.h"
#include "app/front_end.h"
#include "platform/services/text_terminal.h"
#include "presentation/terminal/monitor_page.h"
#include "presentation/terminal/terminal_controller.h"

#include <functional>

namespace tolvo {

/// The published values of the program's monitors as the dashboard takes them.
DashboardSources dashboardSources(Monitoring& monitoring);

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
    DashboardSources sources_;
    TextTerminal& output_;
    std::function<void()> onQuit_;
    LoopRegistration timer_;
};

} // namespace tolvo
