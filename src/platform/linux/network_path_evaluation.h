#pragma once

#include "platform/linux/routing_state.h"
#include "platform/services/path_monitor.h"

#include <filesystem>

namespace tolvo {

/// The path that these routes make. An interface is in use when it carries a default route of its own that plain
/// traffic may take and it is up, so a VPN shows beside what it runs over. Links that only carry another link's frames
/// (a VLAN, a bridge, a bond) count as what is below them. Whether a device is Wi-Fi or a modem is read below
/// sysClassNet (/sys/class/net), where a device that is not found counts as an ordinary one.
NetworkPath evaluateNetworkPath(const RoutingState& state, const std::filesystem::path& sysClassNet);

} // namespace tolvo
