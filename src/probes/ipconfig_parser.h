#pragma once

#include "probes/command_parsing_error.h"

#include <expected>
#include <string>
#include <string_view>

namespace tolvo {

/// The one IPv4 address that is all of the output.
std::expected<std::string, CommandParsingError> parseIPConfigAddress(std::string_view output);

} // namespace tolvo
