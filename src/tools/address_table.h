#pragma once

#include "tools/ip_address.h"
#include "tools/netlink_message.h"

#include <expected>
#include <optional>
#include <vector>

namespace tolvo::tools {

/// One address of an interface.
struct InterfaceAddress {
    unsigned interfaceIndex = 0;
    IPAddress address;
    unsigned prefixLength = 0;
    /// The other end of a point-to-point link.
    std::optional<IPAddress> peer;
    /// Whether it is a further address of the same network, which the kernel doesn't choose as a source.
    bool isSecondary = false;

    bool operator==(const InterfaceAddress&) const = default;
};

/// Appends the address of one RTM_NEWADDR message.
void parseAddress(const NetlinkMessage& message, std::vector<InterfaceAddress>& addresses);

/// All addresses of a family (AF_UNSPEC for both); the error is an errno value.
std::expected<std::vector<InterfaceAddress>, int> readAddresses(int family);

} // namespace tolvo::tools
