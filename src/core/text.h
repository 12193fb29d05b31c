#pragma once

#include <cstddef>
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
/// The length of the well-formed UTF-8 sequence that the bytes, at least one, begin with; 0 for none.
std::size_t utf8SequenceLength(std::string_view bytes);
bool isValidUTF8(std::string_view bytes);

} // namespace tolvo
