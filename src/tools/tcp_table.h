#pragma once

#include "tools/netlink_message.h"

#include <expected>
#include <string>
#include <string_view>

namespace tolvo::tools {

/// The state's name by the kernel's number of it (TCP_ESTABLISHED is 1).
std::string_view tcpStateName(unsigned state);

/// Appends the row of one socket: protocol, queues, a dash for either address, state. The states are what is counted,
/// and with the addresses a crowded table would be twice as long. A message that is no socket has no row.
void appendTCPRow(const NetlinkMessage& message, std::string& rows);

/// The rows of all TCP sockets of both families; the error is an errno value.
std::expected<std::string, int> readTCPRows();

} // namespace tolvo::tools
