#pragma once

#include <optional>
#include <string>

namespace tolvo {

/// Takes the first key off a terminal's input (ECMA-48 and UTF-8), named as TextTerminal names keys; the empty text
/// for a key that has no name there. Nothing when the input is empty, or could go on and isn't complete.
std::optional<std::string> takeTerminalKey(std::string& input, bool isInputComplete);

} // namespace tolvo
