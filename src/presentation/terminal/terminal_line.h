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

/// A bar for a share from 0 to 1, of at most this many columns.
std::string barText(double share, std::size_t columns, TerminalGlyphs glyphs);

/// A bar across the line with a word behind it.
TerminalLine progressLine(double share, const std::string& label, std::size_t columns, TerminalGlyphs glyphs,
                          Tone tone = Tone::Blue);

/// What stands before an item that is done, or isn't yet.
std::string checkMark(bool isDone, TerminalGlyphs glyphs);

/// The lines as a page of exactly size.rows: cut or filled, with the keys in its last line.
std::vector<TerminalLine> withKeyLine(std::vector<TerminalLine> lines, const std::string& keys, TerminalSize size);

/// The line cut at the right edge, whatever its pieces are.
TerminalLine clippedLine(TerminalLine line, std::size_t columns);

/// The text in as many lines as it needs, broken between words.
std::vector<TerminalLine> wrappedLines(const std::string& text, Tone tone, std::size_t columns);
void appendWrapped(std::vector<TerminalLine>& lines, const std::string& text, Tone tone, std::size_t columns);

} // namespace tolvo
