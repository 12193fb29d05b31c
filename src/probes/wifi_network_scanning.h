#pragma once

#include "core/async/task.h"
#include "core/model/wifi_band.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

struct WiFiScannedNetwork {
    /// Trimmed; absent if blank or hidden.
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    std::int64_t rssiDbm = 0;
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;

    bool operator==(const WiFiScannedNetwork&) const = default;
};

struct WiFiNetworkScannerError {
    enum class Kind { InterfaceUnavailable, PlatformFailure };
    Kind kind = Kind::InterfaceUnavailable;
    /// The platform's words; empty for InterfaceUnavailable, whose words are the caller's.
    std::string description;

    bool operator==(const WiFiNetworkScannerError&) const = default;
};

using WiFiScanOutcome = std::expected<std::vector<WiFiScannedNetwork>, WiFiNetworkScannerError>;

/// Lists the networks in range, in no particular order; two access points of one network are two entries.
class WiFiNetworkScanning {
public:
    WiFiNetworkScanning(const WiFiNetworkScanning&) = delete;
    WiFiNetworkScanning& operator=(const WiFiNetworkScanning&) = delete;
    virtual ~WiFiNetworkScanning() = default;

    /// Takes seconds. A cancelled scan throws CancellationError. Resumes on the main thread.
    virtual Task<WiFiScanOutcome> scanNetworks() = 0;

protected:
    WiFiNetworkScanning() = default;
};

} // namespace tolvo
