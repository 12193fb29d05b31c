#pragma once

#include "core/async/main_loop.h"
#include "platform/services/text_terminal.h"
#include "presentation/terminal/terminal_page.h"
#include "presentation/terminal/terminal_view.h"

#include <functional>
#include <map>
#include <string>

namespace tolvo {

/// Shows one page at a time on the terminal's screen. The first page's keys open the others, Escape comes back, q ends.
class TerminalController {
public:
    /// The pages outlive it. onQuit is called when the user asks for the end, or the output is closed.
    TerminalController(MainLoop& loop, TextTerminal& terminal, TerminalGlyphs glyphs, TerminalPage& firstPage,
                       std::map<std::string, TerminalPage*> pagesByKey, std::function<void()> onQuit);
    TerminalController(const TerminalController&) = delete;
    TerminalController& operator=(const TerminalController&) = delete;
    ~TerminalController();

    void enterScreen();
    void leaveScreen();
    /// Paints every line anew, as after a change of size.
    void redraw();

private:
    void handleKey(const std::string& key);
    void show(TerminalPage& page);
    void scheduleDrawing();
    void draw();

    MainLoop& loop_;
    TextTerminal& terminal_;
    TerminalView view_;
    TerminalPage& firstPage_;
    TerminalPage* page_;
    std::map<std::string, TerminalPage*> pagesByKey_;
    std::function<void()> onQuit_;
    bool isOnScreen_ = false;
    bool isDrawingScheduled_ = false;
    LoopRegistration drawing_;
};

} // namespace tolvo
