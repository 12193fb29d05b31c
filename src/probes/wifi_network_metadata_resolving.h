#pragma once

#include "core/async/task.h"

#include <optional>
#include <string>

namespace tolvo {

/// Finds what the link itself doesn't tell. Neither fails: a tool that fails gives no address, or false.
class WiFiNetworkMetadataResolving {
public:
    WiFiNetworkMetadataResolving(const WiFiNetworkMetadataResolving&) = delete;
    WiFiNetworkMetadataResolving& operator=(const WiFiNetworkMetadataResolving&) = delete;
    virtual ~WiFiNetworkMetadataResolving() = default;

    /// The interface's IPv4 address.
    virtual Task<std::optional<std::string>> resolveIPAddress(std::string interfaceName) = 0;
    virtual Task<bool> isVPNActive() = 0;

protected:
    WiFiNetworkMetadataResolving() = default;
};

} // namespace tolvo
