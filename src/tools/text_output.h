#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvo::tools {

/// A whole decimal number within the bounds, without sign; nothing for any other text.
std::optional<std::int64_t> parseNumber(std::string_view text, std::int64_t least, std::int64_t most);

void appendNumber(std::string& out, std::uint64_t number);
/// The text, then blanks up to the width, but at least one.
void appendColumn(std::string& out, std::string_view text, std::size_t width);
/// With every byte outside printable ASCII replaced, for names that come from the world: what a tool prints must stay
/// text.
std::string printable(std::string_view text);

/// Writes all of it to standard output and gives the exit status.
int print(std::string_view text);
/// Says this line on standard error and gives the status.
int fail(std::string_view line, int status);
/// Says on standard error how the tool is called, and gives exitStatus::Usage.
int usageError(std::string_view usage);
/// Says on standard error what went wrong, and gives exitStatus::System.
int systemError(std::string_view tool, std::string_view what, int errorNumber);

} // namespace tolvo::tools
