#pragma once

#include "platform/services/regular_expression.h"
#include "probes/vpn_tunnel_kind.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

struct VPNTunnelInterfaceStatus {
    std::string name;
    VPNTunnelKind kind = VPNTunnelKind::Utun;
    /// As printed between the angle brackets, such as "UP,POINTOPOINT,RUNNING".
    std::string flags;
    std::optional<std::string> status;
    std::vector<std::string> ipv4Addresses;
    /// Zones are kept.
    std::vector<std::string> ipv6Addresses;

    bool operator==(const VPNTunnelInterfaceStatus&) const = default;
};

/// Reads the tunnel interfaces among those that ifconfig prints, and skips what it can't read.
class VPNTunnelInterfaceParser {
public:
    explicit VPNTunnelInterfaceParser(const RegularExpressionCompiling& compiler);

    std::vector<VPNTunnelInterfaceStatus> parseVPNTunnelInterfaces(std::string_view output) const;

private:
    std::optional<std::vector<std::string>> headerGroups(std::string_view line) const;

    std::unique_ptr<RegularExpression> header_;
};

} // namespace tolvo
