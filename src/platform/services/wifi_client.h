#pragma once

#include "core/async/task.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// The platform's value for the band of a channel.
enum class WiFiChannelBand { Unknown = 0, TwoGigahertz = 1, FiveGigahertz = 2, SixGigahertz = 3 };

struct WiFiChannel {
    std::int64_t channelNumber = 0;
    WiFiChannelBand channelBand = WiFiChannelBand::Unknown;

    bool operator==(const WiFiChannel&) const = default;
};

/// The default Wi-Fi interface and what it is attached to; without an access point it has little more than its name.
struct WiFiLink {
    std::optional<std::string> interfaceName;
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    /// In dBm, both.
    std::int64_t rssiValue = 0;
    std::int64_t noiseMeasurement = 0;
    /// In Mbit/s; 0 when the platform tells none.
    double transmitRate = 0;
    std::optional<WiFiChannel> channel;

    bool operator==(const WiFiLink&) const = default;
};

/// An access point as a scan found it. A hidden one has no name.
struct WiFiNetwork {
    std::optional<std::string> ssid;
    std::optional<std::string> bssid;
    std::int64_t rssiValue = 0;
    std::optional<WiFiChannel> channel;

    bool operator==(const WiFiNetwork&) const = default;
};

/// Why a scan failed, in words for a person.
struct WiFiScanError {
    std::string description;

    bool operator==(const WiFiScanError&) const = default;
};

/// The Wi-Fi hardware as the operating system shows it. Main thread only.
class WiFiClient {
public:
    using ScanOutcome = std::expected<std::vector<WiFiNetwork>, WiFiScanError>;

    WiFiClient(const WiFiClient&) = delete;
    WiFiClient& operator=(const WiFiClient&) = delete;
    virtual ~WiFiClient() = default;

    /// Nothing when there is no Wi-Fi interface. Takes less than a millisecond; caches nothing.
    virtual std::optional<WiFiLink> currentLink() = 0;

    /// Looks for all networks in range, which takes seconds. A cancelled scan throws CancellationError.
    virtual Task<ScanOutcome> scan() = 0;

protected:
    WiFiClient() = default;
};

} // namespace tolvo
