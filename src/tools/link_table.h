#pragma once

#include "tools/netlink_message.h"

#include <cstdint>
#include <expected>
#include <string>
#include <vector>

namespace tolvo::tools {

struct Link {
    unsigned index = 0;
    std::string name;
    /// The kernel's flags (IFF_...).
    unsigned flags = 0;
    unsigned mtu = 0;
    /// The driver's kind ("wireguard", "tun", "veth"); empty for hardware.
    std::string kind;
    /// Whether a link of kind "tun" carries Ethernet frames.
    bool isTap = false;

    bool operator==(const Link&) const = default;
};

/// Appends the link of one RTM_NEWLINK message; a message without a name has none.
void parseLink(const NetlinkMessage& message, std::vector<Link>& links);

/// All links of this network namespace; the error is an errno value.
std::expected<std::vector<Link>, int> readLinks();

/// The name by which the VPN detection's tools, `ifconfig` and plain `netstat -rn`, call a link. It is the link's own
/// name, with two differences. A tunnel is known by the beginning of its name there (utun, ipsec, ppp, tun, tap), which
/// Linux leaves to whoever creates it: one that is named otherwise gets its kind in front, as in tun_tailscale0. And a
/// name is made of letters, digits and underscores, so any other character becomes an underscore.
std::string toolName(const Link& link);

/// Whether a link is a WireGuard tunnel.
bool isWireGuard(const Link& link);

} // namespace tolvo::tools
