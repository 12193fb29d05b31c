#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// What we need of a desktop entry file: the keys of its main group.
class DesktopEntry {
public:
    /// Nothing for a text that isn't a desktop entry.
    static std::optional<DesktopEntry> parse(std::string_view text);

    /// Without its escapes.
    std::optional<std::string> string(std::string_view key) const;
    std::vector<std::string> list(std::string_view key) const;
    bool isTrue(std::string_view key) const;
    bool isFalse(std::string_view key) const;

private:
    std::map<std::string, std::string, std::less<>> values_;
};

/// The first word of an Exec value, without its quotes; empty if there is none.
std::string firstWordOfExec(std::string_view exec);

/// A text as it stands in the file, with its escapes.
std::string stringValue(std::string_view text);

/// An Exec value, as it stands in the file, that starts this program without arguments.
std::string execValue(std::string_view program);

} // namespace tolvo
