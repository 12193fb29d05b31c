#include "tools/vpn_service.h"

#include "tools/text_output.h"

#include <net/if.h>

#include <algorithm>

namespace tolvo::tools {

namespace {

std::string_view stateName(VPNServiceState state) {
    switch (state) {
    case VPNServiceState::Connecting:
        return "Connecting";
    case VPNServiceState::Connected:
        return "Connected";
    case VPNServiceState::Disconnecting:
        return "Disconnecting";
    case VPNServiceState::Disconnected:
        return "Disconnected";
    }
    return "Disconnected";
}

/// One word that cannot be taken for two.
std::string word(std::string_view text) {
    std::string result = printable(text);
    std::ranges::replace(result, ' ', '_');
    return result;
}

/// The name may be anything that a user typed. It stays as it is but for what would end the line or the quotation.
std::string quotable(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(result, [](char c) { return (c >= 0 && c < ' ') || c == '"'; }, '\'');
    return result;
}

} // namespace

std::vector<VPNService> wireGuardServices(std::span<const Link> links) {
    std::vector<VPNService> services;
    for (const Link& link : links) {
        if (isWireGuard(link) && (link.flags & IFF_UP) != 0)
            services.push_back({word(link.name), printable(link.name), "wireguard", VPNServiceState::Connected});
    }
    return services;
}

std::string listServices(std::span<const VPNService> services) {
    std::string out;
    for (const VPNService& service : services) {
        std::string state = "* (";
        state.append(stateName(service.state)).append(")");
        appendColumn(out, state, 20);
        const std::string type = word(service.type);
        out.append(word(service.identifier)).append(" VPN (").append(type).append(") \"");
        out.append(quotable(service.name)).append("\" [VPN:").append(type).append("]\n");
    }
    return out;
}

} // namespace tolvo::tools
