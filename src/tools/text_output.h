#pragma once

#include "tools/tool.h"

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

/// A tool's end with this output.
ToolResult succeeded(std::string output);
/// A tool's end with this line on standard error.
ToolResult failed(std::string_view line, int status);
/// Says how the tool is called.
ToolResult usageError(std::string_view usage);
/// Says what went wrong.
ToolResult systemError(std::string_view tool, std::string_view what, int errorNumber);

/// Writes the result to this process's outputs and gives the exit status.
int deliver(const ToolResult& result);

} // namespace tolvo::tools
