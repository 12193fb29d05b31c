#pragma once

#include "presentation/rows/metric_rows.h"

#include <string>
#include <vector>

namespace tolvo {

/// A piece of a line in one colour.
struct TerminalSpan {
    std::string text;
    Tone tone = Tone::Primary;
    bool isBold = false;

    bool operator==(const TerminalSpan&) const = default;
};

using TerminalLine = std::vector<TerminalSpan>;

/// The size of the terminal in characters.
struct TerminalSize {
    std::size_t columns = 80;
    std::size_t rows = 24;

    bool operator==(const TerminalSize&) const = default;
};

/// What the terminal can show, from its locale.
enum class TerminalGlyphs { Unicode, ASCII };

TerminalLine titleAndValueLine(const MetricRow& row, std::size_t columns, Tone valueTone = Tone::Primary);

/// Title, value, and the newest samples as a row of bars, as many as fit.
TerminalLine trendLine(const MetricTrendRow& row, std::size_t columns, TerminalGlyphs glyphs);

/// The line cut at the right edge, whatever its pieces are.
TerminalLine clippedLine(TerminalLine line, std::size_t columns);

/// The text in as many lines as it needs, broken between words.
std::vector<TerminalLine> wrappedLines(const std::string& text, Tone tone, std::size_t columns);

} // namespace tolvo
