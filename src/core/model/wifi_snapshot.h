#pragma once

#include "core/model/wall_time.h"
#include "core/model/wifi_band.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

/// One reading of the Wi-Fi link.
struct WiFiSnapshot {
    WallTime timestamp;
    std::string interfaceName;
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    std::int64_t rssiDbm = 0;
    std::int64_t noiseFloorDbm = 0;
    /// Stored by the producer, which knows whether both levels can be trusted.
    std::optional<std::int64_t> snrDb;
    std::optional<std::int64_t> linkRateMbps;
    std::optional<std::int64_t> channelNumber;
    std::optional<WiFiBand> band;
    std::optional<std::string> ipAddress;
    bool isVPNActive = false;

    bool operator==(const WiFiSnapshot&) const = default;
};

} // namespace tolvo
