#include "presentation/terminal/terminal_text.h"

#include "core/text.h"

#include <algorithm>
#include <array>

namespace tolvo {

namespace {

struct CodePoint {
    char32_t value;
    std::string_view bytes;
    bool isValid;
};

/// Takes the first code point off the text. A byte that begins none is one of its own.
CodePoint takeCodePoint(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = utf8SequenceLength(text);
    const std::string_view bytes = text.substr(0, std::max<std::size_t>(length, 1));
    text.remove_prefix(bytes.size());
    char32_t value = length < 2 ? lead : lead & (0x7FU >> length);
    for (const char c : bytes.substr(1))
        value = (value << 6) | (static_cast<unsigned char>(c) & 0x3FU);
    return {value, bytes, length > 0};
}

struct CodePointRange {
    char32_t first, last;
};

template<std::size_t Count>
bool isIn(const std::array<CodePointRange, Count>& ranges, char32_t value) {
    return std::ranges::any_of(ranges, [&](const auto& range) { return value >= range.first && value <= range.last; });
}

/// Control characters, and the marks that turn the direction of what follows.
constexpr std::array<CodePointRange, 6> obeyed{
    {{0, 0x1F}, {0x7F, 0x9F}, {0x61C, 0x61C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}}};
constexpr std::array<CodePointRange, 5> zeroWidth{
    {{0x300, 0x36F}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xE0100, 0xE01EF}}};
constexpr std::array<CodePointRange, 9> wide{{{0x1100, 0x115F},
                                              {0x2E80, 0xA4CF},
                                              {0xAC00, 0xD7A3},
                                              {0xF900, 0xFAFF},
                                              {0xFE30, 0xFE6F},
                                              {0xFF00, 0xFF60},
                                              {0xFFE0, 0xFFE6},
                                              {0x1F300, 0x1FAFF},
                                              {0x20000, 0x3FFFD}}};

std::size_t columnsOf(char32_t value) {
    if (isIn(zeroWidth, value))
        return 0;
    return isIn(wide, value) ? 2 : 1;
}

std::string escaped(const CodePoint& point) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text = point.isValid && point.value > 0xFF ? "\\u" : "\\x";
    for (int shift = point.isValid && point.value > 0xFF ? 12 : 4; shift >= 0; shift -= 4)
        text += digits[(point.value >> shift) & 0xF];
    return text;
}

} // namespace

std::string terminalSafe(std::string_view text) {
    std::string safe;
    while (!text.empty()) {
        const CodePoint point = takeCodePoint(text);
        if (!point.isValid || isIn(obeyed, point.value))
            safe += escaped(point);
        else
            safe += point.bytes;
    }
    return safe;
}

std::string asciiOnly(std::string_view text) {
    std::string ascii;
    while (!text.empty()) {
        const CodePoint point = takeCodePoint(text);
        if (point.isValid && point.value < 0x80)
            ascii += point.bytes;
        else if (point.bytes == "—")
            ascii += '-';
        else if (point.bytes == "…")
            ascii += '~';
        else
            ascii.append(columnsOf(point.value), '?');
    }
    return ascii;
}

std::size_t columnCount(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty())
        columns += columnsOf(takeCodePoint(text).value);
    return columns;
}

std::string clippedToColumns(std::string_view text, std::size_t columns) {
    if (columnCount(text) <= columns)
        return std::string(text);
    std::string clipped;
    std::size_t used = 0;
    while (columns > 0) {
        const CodePoint point = takeCodePoint(text);
        used += columnsOf(point.value);
        if (used > columns - 1)
            return clipped + "…";
        clipped += point.bytes;
    }
    return clipped;
}

std::string paddedToColumns(std::string_view text, std::size_t columns) {
    std::string padded = clippedToColumns(text, columns);
    return padded.append(columns - columnCount(padded), ' ');
}

} // namespace tolvo
