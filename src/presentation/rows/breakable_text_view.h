#pragma once

#include <string_view>

class QLabel;

namespace tolvo {

/// Shows a text from outside on a wrapping label: as it is, without markup, and with long words, such as addresses,
/// going on in the next line. Assistive programs are given the name, or without one the text.
void showBreakable(QLabel& label, std::string_view text, std::string_view accessibilityLabel = {});

} // namespace tolvo
