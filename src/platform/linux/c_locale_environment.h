#pragma once

#include <string>
#include <vector>

namespace tolvo {

/// This process's environment for programs whose texts are read by parsers.
std::vector<std::string> environmentInCLocale();

} // namespace tolvo
