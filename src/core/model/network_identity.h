#pragma once

#include <optional>
#include <string>

namespace tolvo {

/// What tells one network attachment from another.
struct NetworkIdentity {
    std::string interfaceName;
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    /// The interface's IPv4 address.
    std::optional<std::string> ipAddress;

    bool operator==(const NetworkIdentity&) const = default;
};

} // namespace tolvo
