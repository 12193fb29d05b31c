#pragma once

#include <optional>
#include <string_view>

namespace tolvo {

/// Reads a finite decimal number in the C locale's form, whatever the locale is. The whole text is the number: blanks,
/// a plus sign, words such as "inf" and what a double can't hold are refused.
std::optional<double> readReal(std::string_view text);

} // namespace tolvo
