#include "core/text.h"
#include "export/json_value.h"
#include "fuzz/require.h"
#include "platform/linux/terminal_keys.h"
#include "presentation/terminal/terminal_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace tolvo;
using fuzzing::require;

/// Whether a terminal would obey a part of this UTF-8 text.
bool isObeyed(std::string_view text) {
    const auto isControl = [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; };
    if (std::ranges::any_of(text, isControl))
        return true;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '\xc2' && static_cast<unsigned char>(text[i + 1]) < 0xA0)
            return true;
    }
    return false;
}

/// Whether a part of it would turn the direction of reading, or end a line.
bool isTurning(std::string_view text) {
    constexpr std::string_view turning[] = {"\u061c", "\u200e", "\u200f", "\u2028", "\u2029", "\u202a", "\u202b",
                                            "\u202c", "\u202d", "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"};
    return std::ranges::any_of(turning, [&](std::string_view mark) { return text.contains(mark); });
}

void requireSafe(std::string_view text) {
    const std::string safe = terminalSafe(text);
    require(isValidUTF8(safe) && !isObeyed(safe) && !isTurning(safe));
    require(terminalSafe(safe) == safe);
    require(safe == text || !isValidUTF8(text) || isObeyed(text) || isTurning(text));
    require(columnCount(asciiOnly(safe)) == columnCount(safe));
    require(std::ranges::all_of(asciiOnly(safe), [](char c) { return c >= ' ' && c <= '~'; }));
}

void requireFitting(const std::string& text) {
    for (const std::size_t columns : {0U, 1U, 7U, 40U}) {
        const std::string clipped = clippedToColumns(text, columns);
        require(columnCount(clipped) <= columns && isValidUTF8(clipped));
        require(columnCount(paddedToColumns(text, columns)) == columns);
    }
}

void requireReadableJSON(const std::string& text) {
    for (const auto layout : {JSONLayout::Pretty, JSONLayout::OneLine}) {
        const auto encoded = encodeJSON(JSONObject{{"key", text}}, layout);
        require(encoded.has_value() == isValidUTF8(text));
        require(!encoded || nlohmann::json::parse(*encoded).at("key") == text);
        require(!encoded || layout == JSONLayout::Pretty || !isObeyed(*encoded));
    }
}

/// Every byte that is typed becomes a key or a part of one.
void requireKeysToEnd(std::string typed) {
    while (!typed.empty()) {
        const std::size_t before = typed.size();
        takeTerminalKey(typed, true);
        require(typed.size() < before);
    }
}

} // namespace

/// Any bytes as a name from the air on its way to a terminal and into a report, and as keys that are typed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    requireSafe(text);
    requireFitting(terminalSafe(text));
    requireReadableJSON(text);
    requireKeysToEnd(text);
    return 0;
}
