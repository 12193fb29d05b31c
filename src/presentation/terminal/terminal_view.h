#pragma once

#include "platform/services/text_terminal.h"
#include "presentation/terminal/terminal_line.h"

#include <vector>

namespace tolvo {

/// Paints lines on a terminal in place, and only those that differ from what stands there.
class TerminalView {
public:
    TerminalView(TextTerminal& terminal, TerminalGlyphs glyphs) : terminal_(terminal), glyphs_(glyphs) {}

    TerminalSize size() const;
    /// Whether the output still takes anything.
    bool show(const std::vector<TerminalLine>& lines);
    /// Forgets what stands there: the next show() paints every line.
    void invalidate() { shown_.clear(); }

private:
    TextTerminal& terminal_;
    TerminalGlyphs glyphs_;
    std::vector<TerminalLine> shown_;
};

} // namespace tolvo
