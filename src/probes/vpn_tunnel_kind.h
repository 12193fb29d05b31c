#pragma once

#include "core/model/raw_value.h"

#include <optional>
#include <string_view>

namespace tolvo {

enum class VPNTunnelKind { Utun, Ipsec, Ppp, Tun, Tap };

template<>
inline constexpr RawValueTable<VPNTunnelKind, 5> rawValueTable<VPNTunnelKind>{{
    {VPNTunnelKind::Utun, "utun"},
    {VPNTunnelKind::Ipsec, "ipsec"},
    {VPNTunnelKind::Ppp, "ppp"},
    {VPNTunnelKind::Tun, "tun"},
    {VPNTunnelKind::Tap, "tap"},
}};

/// The kind that the interface's name begins with.
constexpr std::optional<VPNTunnelKind> vpnTunnelKind(std::string_view interfaceName) {
    for (const auto& [kind, beginning] : rawValueTable<VPNTunnelKind>) {
        if (interfaceName.starts_with(beginning))
            return kind;
    }
    return std::nullopt;
}

} // namespace tolvo
