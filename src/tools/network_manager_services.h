#pragma once

#include "tools/vpn_service.h"

#include <vector>

namespace tolvo::tools {

/// NetworkManager's active VPN and WireGuard connections. Without a system bus or NetworkManager there are none. A bus
/// that hangs may keep it for long: the caller bounds the time.
std::vector<VPNService> networkManagerServices();

} // namespace tolvo::tools
