#pragma once

#include "core/model/wifi_band.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

/// One reading of the Wi-Fi interface, as the platform gives it.
struct WiFiInterfaceSnapshot {
    std::string interfaceName;
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    std::int64_t rssiDbm = 0;
    std::int64_t noiseFloorDbm = 0;
    /// Rounded; absent below 1.
    std::optional<std::int64_t> linkRateMbps;
    std::optional<std::int64_t> channelNumber;
    std::optional<WiFiBand> band;

    bool operator==(const WiFiInterfaceSnapshot&) const = default;
};

/// Reads the current link.
class WiFiInterfaceProviding {
public:
    WiFiInterfaceProviding(const WiFiInterfaceProviding&) = delete;
    WiFiInterfaceProviding& operator=(const WiFiInterfaceProviding&) = delete;
    virtual ~WiFiInterfaceProviding() = default;

    /// Nothing when the machine has no Wi-Fi interface. Called on the main thread and quick. Caches nothing.
    virtual std::optional<WiFiInterfaceSnapshot> currentSnapshot() = 0;

protected:
    WiFiInterfaceProviding() = default;
};

} // namespace tolvo
