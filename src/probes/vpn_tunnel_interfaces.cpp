#include "probes/vpn_tunnel_interfaces.h"

#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

void appendFirstWord(std::string_view rest, std::vector<std::string>& addresses) {
    const auto words = tokens(rest);
    if (!words.empty())
        addresses.emplace_back(words.front());
}

void readDetail(std::string_view line, VPNTunnelInterfaceStatus& tunnel) {
    constexpr std::string_view ipv4 = "inet ", ipv6 = "inet6 ", status = "status:";
    const std::string_view detail = trimmed(line);
    if (detail.starts_with(ipv4))
        appendFirstWord(detail.substr(ipv4.size()), tunnel.ipv4Addresses);
    else if (detail.starts_with(ipv6))
        appendFirstWord(detail.substr(ipv6.size()), tunnel.ipv6Addresses);
    else if (detail.starts_with(status))
        tunnel.status = trimmed(detail.substr(status.size()));
}

} // namespace

VPNTunnelInterfaceParser::VPNTunnelInterfaceParser(const RegularExpressionCompiling& compiler)
    : header_(compiler.compile(R"(^(\w+):\s*flags=\d+<([^>]*)>)")) {}

/// Name and flags, if the line begins an interface.
std::optional<std::vector<std::string>> VPNTunnelInterfaceParser::headerGroups(std::string_view line) const {
    // Most lines are no headers, and a plain search tells so much sooner.
    if (!line.contains("flags="))
        return std::nullopt;
    auto groups = header_->firstMatch(line);
    return groups && groups->size() == 2 ? std::move(groups) : std::nullopt;
}

std::vector<VPNTunnelInterfaceStatus>
VPNTunnelInterfaceParser::parseVPNTunnelInterfaces(std::string_view output) const {
    std::vector<VPNTunnelInterfaceStatus> tunnels;
    bool isInTunnel = false;
    for (const std::string_view line : nonEmptyLines(output)) {
        if (const auto header = headerGroups(line)) {
            const std::string& name = header->front();
            const auto kind = vpnTunnelKind(name);
            isInTunnel = kind.has_value();
            if (kind)
                tunnels.push_back({name, *kind, header->back(), std::nullopt, {}, {}});
        } else if (isInTunnel) {
            readDetail(line, tunnels.back());
        }
    }
    return tunnels;
}

} // namespace tolvo
