#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

// What tools' output and stored texts need of text handling. White space is ASCII's.

/// Without white space and newlines at both ends.
std::string_view trimmed(std::string_view text);
/// The lines, without the empty ones; a carriage return before the newline goes too.
std::vector<std::string_view> nonEmptyLines(std::string_view text);
/// The pieces between white space, without empty ones.
std::vector<std::string_view> tokens(std::string_view line);
/// ASCII letters only; other bytes stay.
std::string lowerCased(std::string_view text);
std::string upperCased(std::string_view text);
bool isValidUTF8(std::string_view bytes);

} // namespace tolvo
