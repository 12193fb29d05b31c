#pragma once

#include "core/model/connection_pressure_result.h"

#include <string_view>

namespace tolvo {

/// Counts the sockets of a TCP table by the last word of each row that begins with "tcp". Other rows and other states
/// count for nothing; no row at all gives three zeros.
TCPConnectionStateCounts parseTCPConnectionStates(std::string_view output);

} // namespace tolvo
