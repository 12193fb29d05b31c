#include "export/json_value.h"

#include "core/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tolvo {

namespace {

class Encoder {
public:
    explicit Encoder(JSONLayout layout) : isPretty_(layout == JSONLayout::Pretty) {}

    void write(const JSONValue& value) {
        std::visit([this](const auto& content) { append(content); }, value.storage());
    }

    std::string text;
    std::optional<JSONEncodingError> error;

private:
    void append(bool value) { text += value ? "true" : "false"; }

    void append(std::int64_t value) { text += std::to_string(value); }

    void append(double value) {
        if (!std::isfinite(value)) {
            if (!error)
                error = JSONEncodingError{
                    "Unable to encode a number that is not finite.", {path_.begin(), path_.end()}, {}};
            return;
        }
        std::array<char, 32> buffer{};
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
        text.append(buffer.data(), end.ptr);
    }

    void append(const std::string& value) {
        text += '"';
        for (std::string_view rest = value; !rest.empty(); rest.remove_prefix(1)) {
            const auto plain = std::ranges::find_if_not(rest, isPlain);
            text.append(rest.begin(), plain);
            rest = {plain, rest.end()};
            if (rest.empty())
                break;
            // A line may end up on a terminal, and that obeys these controls too.
            if (!isPretty_ && beginsWithC1Control(rest)) {
                rest.remove_prefix(1);
                appendNumbered(rest.front());
            } else {
                appendEscaped(rest.front());
            }
        }
        text += '"';
    }

    /// Whether it stands for itself on any layout.
    static bool isPlain(char c) { return c >= ' ' && c < '\x7f' && c != '"' && c != '\\' && c != '/'; }

    /// Whether it begins with one of U+0080 to U+009F.
    static bool beginsWithC1Control(std::string_view bytes) {
        return bytes.size() >= 2 && bytes[0] == '\xc2' && bytes[1] >= '\x80' && bytes[1] <= '\x9f';
    }

    void appendEscaped(char c) {
        constexpr std::string_view escaped = "\"\\/\b\f\n\r\t";
        constexpr std::string_view names = "\"\\/bfnrt";
        if (const auto index = escaped.find(c); index != std::string_view::npos)
            text.append({'\\', names[index]});
        else if (static_cast<unsigned char>(c) < 0x20 || (!isPretty_ && c == '\x7f'))
            appendNumbered(c);
        else
            text += c;
    }

    void appendNumbered(char c) {
        constexpr std::string_view digits = "0123456789abcdef";
        const auto value = static_cast<unsigned char>(c);
        text.append("\\u00").append({digits[value >> 4U], digits[value & 15U]});
    }

    void append(const JSONArray& array) {
        appendItems('[', array, ']', [this](const JSONValue& item) { write(item); });
    }

    void append(const JSONObject& object) {
        appendItems('{', object, '}', [this](const auto& member) {
            append(member.first);
            text += isPretty_ ? " : " : ":";
            path_.push_back(member.first);
            write(member.second);
            path_.pop_back();
        });
    }

    template<class Items, class Write>
    void appendItems(char open, const Items& items, char close, Write writeItem) {
        text += open;
        ++depth_;
        bool isFirst = true;
        for (const auto& item : items) {
            if (!std::exchange(isFirst, false))
                text += ',';
            startLine();
            writeItem(item);
        }
        --depth_;
        if (!items.empty())
            startLine();
        text += close;
    }

    void startLine() {
        if (isPretty_)
            text.append("\n").append(2 * depth_, ' ');
    }

    bool isPretty_;
    std::size_t depth_ = 0;
    std::vector<std::string_view> path_;
};

/// Decimal, with zeros up to the width.
void appendPadded(std::string& text, int value, std::size_t width) {
    std::array<char, 12> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const auto size = static_cast<std::size_t>(end - digits.data());
    text.append(size < width ? width - size : 0, '0').append(digits.data(), size);
}

std::string iso8601(WallTime time) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    const auto day = std::chrono::floor<std::chrono::days>(seconds);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(seconds - day);
    const int year = static_cast<int>(date.year());
    std::string text(year < 0 ? "-" : "");
    text.reserve(24);
    appendPadded(text, std::abs(year), 4);
    appendPadded(text += '-', static_cast<int>(static_cast<unsigned>(date.month())), 2);
    appendPadded(text += '-', static_cast<int>(static_cast<unsigned>(date.day())), 2);
    appendPadded(text += 'T', static_cast<int>(clock.hours().count()), 2);
    appendPadded(text += ':', static_cast<int>(clock.minutes().count()), 2);
    appendPadded(text += ':', static_cast<int>(clock.seconds().count()), 2);
    return text + 'Z';
}

} // namespace

JSONValue::JSONValue(WallTime value) : value_(iso8601(value)) {}

std::expected<std::string, JSONEncodingError> encodeJSON(const JSONValue& value, JSONLayout layout) {
    Encoder encoder(layout);
    encoder.write(value);
    if (encoder.error)
        return std::unexpected(*std::move(encoder.error));
    if (!isValidUTF8(encoder.text))
        return std::unexpected(
            JSONEncodingError{"Unable to convert diagnostics JSON data to UTF-8 string.", {}, std::move(encoder.text)});
    return std::move(encoder.text);
}

} // namespace tolvo
