#include "presentation/terminal/terminal_view.h"

#include "presentation/terminal/terminal_text.h"

#include <string>
#include <string_view>
#include <utility>

namespace tolvo {

namespace {

/// The terminal's own palette, so that the user's theme holds.
std::string_view colourCode(Tone tone) {
    switch (tone) {
    case Tone::Primary:
        return "39";
    case Tone::Secondary:
    case Tone::Dimmed:
    case Tone::Gray:
        return "90";
    case Tone::White:
        return "97";
    case Tone::Green:
        return "32";
    case Tone::Yellow:
        return "93";
    case Tone::Orange:
        return "33";
    case Tone::Blue:
        return "34";
    case Tone::Red:
        return "31";
    }
    std::unreachable();
}

/// What names hold is written out where lines are made, so that they fit. It is here once more that nothing gets past.
void appendSpan(std::string& output, const TerminalSpan& span, TerminalGlyphs glyphs) {
    const std::string text = terminalSafe(span.text);
    output.append("\x1b[0;")
        .append(span.isBold ? "1;" : "")
        .append(colourCode(span.tone))
        .append("m")
        .append(glyphs == TerminalGlyphs::ASCII ? asciiOnly(text) : text);
}

} // namespace

TerminalSize TerminalView::size() const {
    const TextTerminal::Size size = terminal_.size();
    return {size.columns, size.rows};
}

bool TerminalView::show(const std::vector<TerminalLine>& lines) {
    std::string output;
    if (shown_.size() != lines.size()) {
        output = "\x1b[0m\x1b[2J";
        shown_.assign(lines.size(), TerminalLine());
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i] == shown_[i])
            continue;
        // Erasing comes first: behind a full line the cursor still stands on its last character.
        output.append("\x1b[").append(std::to_string(i + 1)).append(";1H\x1b[0m\x1b[K");
        for (const TerminalSpan& span : lines[i])
            appendSpan(output, span, glyphs_);
        output.append("\x1b[0m");
    }
    shown_ = lines;
    if (output.empty())
        return true;
    const TextTerminal::WriteOutcome outcome = terminal_.write(output);
    if (outcome == TextTerminal::WriteOutcome::Skipped)
        invalidate();
    return outcome != TextTerminal::WriteOutcome::Closed;
}

} // namespace tolvo
