#pragma once

#include "tools/netlink_message.h"

#include <expected>
#include <string>
#include <string_view>

namespace tolvo::tools {

/// Brief rows leave the addresses out and are less than half as long.
enum class TCPRowForm { Full, Brief };

/// The state's name by the kernel's number of it (TCP_ESTABLISHED is 1).
std::string_view tcpStateName(unsigned state);

/// Appends the row of one socket: protocol, queues, local and foreign address, state. A message that is no socket has
/// none.
void appendTCPRow(const NetlinkMessage& message, TCPRowForm form, std::string& rows);

/// The rows of all TCP sockets of both families; the error is an errno value.
std::expected<std::string, int> readTCPRows(TCPRowForm form);

} // namespace tolvo::tools
