#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tolvo {

/// The text with everything a terminal might obey, or that would turn the reading direction, written out as escapes.
/// The names of foreign networks pass through here. Bytes that are not UTF-8 are written out too.
std::string terminalSafe(std::string_view text);

/// The text for a terminal that has ASCII only: the dash of an absent value and the mark of a cut have a likeness,
/// all else becomes question marks, in as many columns.
std::string asciiOnly(std::string_view text);

/// How many columns a terminal needs for the text (Unicode's wide and zero-width ranges, roughly).
std::size_t columnCount(std::string_view text);

/// The beginning of the text that fits, with "…" in the last column where something was cut.
std::string clippedToColumns(std::string_view text, std::size_t columns);

/// Clipped or filled with blanks to exactly this many columns.
std::string paddedToColumns(std::string_view text, std::size_t columns);

} // namespace tolvo
