#pragma once

#include "platform/linux/nl80211/nl80211_querying.h"
#include "platform/linux/nl80211/nl80211_readings.h"
#include "platform/services/wifi_client.h"

#include <expected>
#include <optional>
#include <vector>

namespace tolvo {

/// What is taken for the noise where a driver tells none: thermal noise at room temperature, -174 dBm in each hertz, is
/// -101 dBm over a channel of 20 MHz (10 log 20,000,000 = 73 dB), and a receiver's noise figure of 6 dB adds to it.
inline constexpr std::int64_t thermalNoiseFloorDbm = -95;

struct DefaultWiFiInterface {
    StationInterface interface;
    /// Present while the interface is associated.
    std::optional<StationReading> accessPoint;
};

/// The first associated station interface, else the first station interface, else nothing. Errors are errno values.
std::expected<std::optional<DefaultWiFiInterface>, int> findDefaultInterface(Nl80211Querying& kernel);

/// One reading of the default interface and its link.
std::expected<std::optional<WiFiLink>, int> readLink(Nl80211Querying& kernel);

/// The noise that the survey tells of the link's own channel. Several entries may be of that frequency; the one marked
/// as in use goes first, but drivers may leave the mark out.
std::optional<std::int64_t> noiseAtFrequency(const std::vector<SurveyEntry>& survey, std::uint32_t frequencyMHz);

} // namespace tolvo
