#include "core/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace tolvo {

namespace {

constexpr std::string_view whiteSpace = " \t\n\r\v\f";

bool isWhiteSpace(char c) {
    return whiteSpace.find(c) != std::string_view::npos;
}

/// How many bytes in front, in whole words, are ASCII.
std::size_t asciiWordsLength(std::string_view bytes) {
    std::size_t length = 0;
    for (std::uint64_t word = 0; length + sizeof word <= bytes.size(); length += sizeof word) {
        std::memcpy(&word, bytes.data() + length, sizeof word);
        if ((word & 0x8080'8080'8080'8080U) != 0)
            break;
    }
    return length;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::vector<std::string_view> nonEmptyLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (!line.empty())
            lines.push_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::vector<std::string_view> tokens(std::string_view line) {
    std::vector<std::string_view> result;
    auto position = line.begin();
    while (true) {
        const auto first = std::find_if_not(position, line.end(), isWhiteSpace);
        if (first == line.end())
            return result;
        position = std::find_if(first, line.end(), isWhiteSpace);
        result.emplace_back(first, position);
    }
}

std::string lowerCased(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

std::string upperCased(std::string_view text) {
    std::string result(text);
    for (char& c : result) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return result;
}

std::size_t utf8SequenceLength(std::string_view bytes) {
    const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); };
    // Unicode, table 3-7.
    struct Range {
        std::uint8_t first, last, secondMin, secondMax;
        std::size_t length;
    };
    static constexpr std::array<Range, 9> ranges{{{0x00, 0x7F, 0, 0, 1},
                                                  {0xC2, 0xDF, 0x80, 0xBF, 2},
                                                  {0xE0, 0xE0, 0xA0, 0xBF, 3},
                                                  {0xE1, 0xEC, 0x80, 0xBF, 3},
                                                  {0xED, 0xED, 0x80, 0x9F, 3},
                                                  {0xEE, 0xEF, 0x80, 0xBF, 3},
                                                  {0xF0, 0xF0, 0x90, 0xBF, 4},
                                                  {0xF1, 0xF3, 0x80, 0xBF, 4},
                                                  {0xF4, 0xF4, 0x80, 0x8F, 4}}};
    for (const Range& range : ranges) {
        if (byteAt(0) < range.first || byteAt(0) > range.last)
            continue;
        if (bytes.size() < range.length)
            return 0;
        if (range.length > 1 && (byteAt(1) < range.secondMin || byteAt(1) > range.secondMax))
            return 0;
        for (std::size_t i = 2; i < range.length; ++i) {
            if ((byteAt(i) & 0xC0) != 0x80)
                return 0;
        }
        return range.length;
    }
    return 0;
}

bool isValidUTF8(std::string_view bytes) {
    while (true) {
        // The tools print ASCII by the ten thousand bytes, and this is asked of all of it.
        bytes.remove_prefix(asciiWordsLength(bytes));
        if (bytes.empty())
            return true;
        const std::size_t length = utf8SequenceLength(bytes);
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
}

} // namespace tolvo
