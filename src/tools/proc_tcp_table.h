#pragma once

#include <expected>
#include <string>
#include <string_view>

namespace tolvo::tools {

/// Appends a brief row for each socket of a table as /proc/net/tcp and tcp6 print it.
void appendTCPRowsOfProcTable(std::string_view table, std::string_view protocol, std::string& rows);

/// The rows of all TCP sockets for kernels that don't answer the socket dump; the error is an errno value.
std::expected<std::string, int> readTCPRowsFromProc();

} // namespace tolvo::tools
