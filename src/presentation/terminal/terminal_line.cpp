#include "presentation/terminal/terminal_line.h"

#include "core/text.h"
#include "presentation/rows/sparkline.h"
#include "presentation/terminal/terminal_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <span>
#include <string_view>

namespace tolvo {

namespace {

constexpr std::size_t titleColumns = 15;
constexpr std::size_t valueColumns = 14;

constexpr std::array<std::string_view, 8> unicodeBars{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<std::string_view, 8> asciiBars{"_", ".", "-", "~", "=", "+", "*", "#"};

std::string bars(const MetricTrendRow& row, std::size_t columns, TerminalGlyphs glyphs) {
    const std::size_t count = std::min(columns, row.samples.size());
    if (count == 0)
        return {};
    std::vector<double> heights = sparklineHeights(row.samples, row.yDomain);
    if (heights.size() > count)
        heights.erase(heights.begin(), heights.end() - static_cast<std::ptrdiff_t>(count));
    const auto& levels = glyphs == TerminalGlyphs::Unicode ? unicodeBars : asciiBars;
    std::string text;
    for (const double height : heights)
        text += levels[static_cast<std::size_t>(std::lround(height * 7))];
    return text;
}

} // namespace

TerminalLine titleAndValueLine(const MetricRow& row, std::size_t columns, Tone valueTone) {
    return clippedLine(
        {{" " + paddedToColumns(row.title, titleColumns), Tone::Secondary}, {terminalSafe(row.value), valueTone}},
        columns);
}

TerminalLine trendLine(const MetricTrendRow& row, std::size_t columns, TerminalGlyphs glyphs) {
    const std::size_t before = 1 + titleColumns + valueColumns;
    return clippedLine({{" " + paddedToColumns(row.title, titleColumns), Tone::Secondary},
                        {paddedToColumns(row.value, valueColumns), Tone::Primary},
                        {bars(row, columns > before ? columns - before : 0, glyphs), row.strokeColor}},
                       columns);
}

std::string barText(double share, std::size_t columns, TerminalGlyphs glyphs) {
    const double filled = std::round(std::clamp(share, 0.0, 1.0) * static_cast<double>(columns));
    std::string text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(filled); ++i)
        text += glyphs == TerminalGlyphs::Unicode ? "█" : "#";
    return text;
}

TerminalLine progressLine(double share, const std::string& label, std::size_t columns, TerminalGlyphs glyphs,
                          Tone tone) {
    const std::size_t besides = columnCount(label) + 4;
    const std::size_t width = columns > besides ? columns - besides : 0;
    const std::string done = barText(share, width, glyphs);
    std::string ahead;
    for (std::size_t i = columnCount(done); i < width; ++i)
        ahead += glyphs == TerminalGlyphs::Unicode ? "░" : "-";
    return clippedLine({{" "}, {done, tone}, {ahead, Tone::Secondary}, {"  " + label}}, columns);
}

std::string checkMark(bool isDone, TerminalGlyphs glyphs) {
    if (glyphs == TerminalGlyphs::ASCII)
        return isDone ? " [x] " : " [ ] ";
    return isDone ? " ✓ " : " · ";
}

std::vector<TerminalLine> withKeyLine(std::vector<TerminalLine> lines, const std::string& keys, TerminalSize size) {
    if (size.rows == 0)
        return {};
    lines.resize(size.rows - 1);
    lines.push_back(clippedLine({{" " + keys, Tone::Secondary}}, size.columns));
    return lines;
}

TerminalLine clippedLine(TerminalLine line, std::size_t columns) {
    std::size_t used = 0;
    for (TerminalSpan& span : line) {
        span.text = clippedToColumns(span.text, columns - used);
        used += columnCount(span.text);
    }
    std::erase_if(line, [](const TerminalSpan& span) { return span.text.empty(); });
    return line;
}

std::vector<TerminalLine> wrappedLines(const std::string& text, Tone tone, std::size_t columns) {
    std::vector<std::string> lines{""};
    for (const std::string_view word : tokens(text)) {
        if (!lines.back().empty() && columnCount(lines.back()) + 1 + columnCount(word) + 1 > columns)
            lines.emplace_back();
        lines.back().append(" ").append(word);
    }
    std::vector<TerminalLine> wrapped;
    wrapped.reserve(lines.size());
    for (std::string& line : lines)
        wrapped.push_back(clippedLine({{std::move(line), tone}}, columns));
    return wrapped;
}

void appendWrapped(std::vector<TerminalLine>& lines, const std::string& text, Tone tone, std::size_t columns) {
    std::ranges::move(wrappedLines(text, tone, columns), std::back_inserter(lines));
}

} // namespace tolvo
