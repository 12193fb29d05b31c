#include "tools/address_table.h"

#include "tools/netlink_dump.h"

#include <linux/if_addr.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>

#include <utility>

namespace tolvo::tools {

void parseAddress(const NetlinkMessage& message, std::vector<InterfaceAddress>& addresses) {
    const auto header = valueAt<ifaddrmsg>(message.payload);
    if (message.type != RTM_NEWADDR || !header || (header->ifa_family != AF_INET && header->ifa_family != AF_INET6))
        return;
    std::optional<IPAddress> local;
    std::optional<IPAddress> other;
    visitAttributes(behind(message.payload, sizeof(ifaddrmsg)), [&](std::uint16_t type, Bytes payload) {
        if (type == IFA_LOCAL)
            local = IPAddress::from(header->ifa_family, payload);
        else if (type == IFA_ADDRESS)
            other = IPAddress::from(header->ifa_family, payload);
    });
    // The kernel repeats the local address as the other end when the link has no peer; IPv6 then leaves it out.
    if (!local)
        local = std::exchange(other, std::nullopt);
    if (other == local)
        other.reset();
    // IFA_F_SECONDARY means "temporary" for IPv6.
    if (local)
        addresses.push_back({header->ifa_index, *local, header->ifa_prefixlen, other,
                             header->ifa_family == AF_INET && (header->ifa_flags & IFA_F_SECONDARY) != 0});
}

std::expected<std::vector<InterfaceAddress>, int> readAddresses(int family) {
    ifaddrmsg request{};
    request.ifa_family = static_cast<std::uint8_t>(family);
    return dumpTable<InterfaceAddress>(NETLINK_ROUTE, RTM_GETADDR, request, parseAddress);
}

} // namespace tolvo::tools
