#include "platform/linux/desktop_entry.h"

#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";

char unescapedCharacter(char c) {
    switch (c) {
    case 's':
        return ' ';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case 'r':
        return '\r';
    default:
        return c;
    }
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size();
        result += isEscape ? unescapedCharacter(text[++i]) : text[i];
    }
    return result;
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view text) {
    DesktopEntry entry;
    std::string_view group;
    for (const std::string_view line : nonEmptyLines(text)) {
        if (line.starts_with('['))
            group = trimmed(line);
        const auto equals = line.find('=');
        if (group != mainGroup || line.starts_with('#') || equals == std::string_view::npos)
            continue;
        entry.values_.insert_or_assign(std::string(trimmed(line.substr(0, equals))),
                                       std::string(trimmed(line.substr(equals + 1))));
    }
    if (entry.values_.empty())
        return std::nullopt;
    return entry;
}

std::optional<std::string> DesktopEntry::string(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(unescaped(found->second));
}

std::vector<std::string> DesktopEntry::list(std::string_view key) const {
    std::vector<std::string> items;
    std::string rest = string(key).value_or("");
    while (!rest.empty()) {
        const auto end = rest.find(';');
        if (end != 0)
            items.push_back(rest.substr(0, end));
        rest = end == std::string::npos ? "" : rest.substr(end + 1);
    }
    return items;
}

bool DesktopEntry::isTrue(std::string_view key) const {
    return string(key) == "true";
}

bool DesktopEntry::isFalse(std::string_view key) const {
    return string(key) == "false";
}

std::string firstWordOfExec(std::string_view exec) {
    std::string_view rest = trimmed(exec);
    const bool isQuoted = rest.starts_with('"');
    rest.remove_prefix(isQuoted ? 1 : 0);
    std::string word;
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (isQuoted ? rest[i] == '"' : rest[i] == ' ')
            break;
        const bool isEscape = (isQuoted && rest[i] == '\\') || rest.substr(i).starts_with("%%");
        if (isEscape && i + 1 < rest.size())
            ++i;
        word += rest[i];
    }
    return word;
}

std::string stringValue(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '\\')
            result += "\\\\";
        else if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else if (c == '\t')
            result += "\\t";
        else
            result += c;
    }
    return result;
}

std::string execValue(std::string_view program) {
    std::string quoted = "\"";
    for (const char c : program) {
        if (std::string_view("\"`$\\").find(c) != std::string_view::npos)
            quoted += '\\';
        // A single one begins a field code.
        quoted += c == '%' ? "%%" : std::string(1, c);
    }
    return stringValue(quoted + '"');
}

} // namespace tolvo
