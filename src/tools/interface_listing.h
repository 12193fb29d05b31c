#pragma once

#include "tools/address_table.h"
#include "tools/link_table.h"

#include <span>
#include <string>

namespace tolvo::tools {

/// One paragraph an interface: a header line with its toolName, flags and MTU, then indented its addresses and status.
std::string listInterfaces(std::span<const Link> links, std::span<const InterfaceAddress> addresses);

} // namespace tolvo::tools
