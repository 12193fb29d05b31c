#pragma once

#include "core/model/raw_value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

enum class VPNConnectionServiceState { Connected, Disconnected, Connecting, Disconnecting };

template<>
inline constexpr RawValueTable<VPNConnectionServiceState, 4> rawValueTable<VPNConnectionServiceState>{{
    {VPNConnectionServiceState::Connected, "connected"},
    {VPNConnectionServiceState::Disconnected, "disconnected"},
    {VPNConnectionServiceState::Connecting, "connecting"},
    {VPNConnectionServiceState::Disconnecting, "disconnecting"},
}};

/// A VPN that the system itself manages.
struct VPNConnectionServiceStatus {
    std::string identifier;
    std::optional<std::string> name;
    VPNConnectionServiceState state = VPNConnectionServiceState::Disconnected;

    bool operator==(const VPNConnectionServiceStatus&) const = default;
};

/// Reads the list that "scutil --nc list" prints, and skips what it can't read.
std::vector<VPNConnectionServiceStatus> parseVPNConnectionServices(std::string_view output);

} // namespace tolvo
