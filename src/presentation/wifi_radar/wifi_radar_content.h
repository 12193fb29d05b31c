#pragma once

#include "core/async/published.h"
#include "core/model/wifi_snapshot.h"
#include "ondemand/wifi_radar_nearby_networks.h"
#include "presentation/rows/metric_rows.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// The published values behind the radar: its own two controllers', and the Wi-Fi monitor's for the moment before its
/// first poll.
struct WiFiRadarSources {
    Published<std::optional<WiFiSnapshot>>& radarSnapshot;
    Published<std::vector<WiFiSnapshot>>& radarHistory;
    Published<std::optional<WiFiSnapshot>>& monitorSnapshot;
    Published<std::vector<WiFiSnapshot>>& monitorHistory;
    Published<std::vector<RadarNearbyNetwork>>& nearbyNetworks;
    Published<std::optional<std::string>>& nearbyErrorMessage;
};

std::vector<Subscription> subscribeToAll(const WiFiRadarSources& sources, const std::function<void()>& onChange);

namespace wifi_radar {

inline constexpr std::string_view symbolName = "scope";
inline constexpr std::string_view title = "Wi-Fi Radar";
inline constexpr std::string_view subtitle = "Move through your space to find better coverage. Radar blends live link "
                                             "quality with nearby network pressure.";
inline constexpr std::string_view currentTag = "Current";
inline constexpr std::string_view nearbyTitle = "Nearby Networks";
/// What assistive programs call the painted parts.
inline constexpr std::string_view faceLabel = "Signal quality";
inline constexpr std::string_view hintLabel = "Direction";

} // namespace wifi_radar

struct RadarMetricCard {
    std::string title;
    std::string value;
    std::optional<std::string> unit;
    Tone color = Tone::Orange;
    /// Oldest first.
    std::vector<double> samples;
    ValueRange yDomain;

    bool operator==(const RadarMetricCard&) const = default;
};

struct RadarNearbyNetworkRow {
    std::string ssid;
    std::string signal;
    std::string channel;

    bool operator==(const RadarNearbyNetworkRow&) const = default;
};

/// All that the radar says at one moment, but for the sweep's angle.
struct WiFiRadarContent {
    std::int64_t score = 0;
    /// Green, yellow or orange: of the sweep, the hint and the cards. Its bands are not those of the coverage message.
    Tone scoreColor = Tone::Orange;
    std::string scoreSymbolName;
    std::string coverageMessage;
    std::string hintSymbolName;
    std::string hint;
    std::string networkName;
    bool hasCurrentTag = false;
    std::string channelLine;
    /// Quality, ratio, signal and speed.
    std::vector<RadarMetricCard> cards;
    std::vector<RadarNearbyNetworkRow> nearby;
    /// In place of an empty list.
    std::string nearbyPlaceholder;

    bool operator==(const WiFiRadarContent&) const = default;
};

WiFiRadarContent wifiRadarContent(const WiFiRadarSources& sources);

/// Where the sweep's wedge begins, in degrees clockwise from the right, so many seconds after the radar was opened: one
/// turn takes 2.2 seconds and begins at the top.
double radarSweepDegrees(double secondsSinceOpening);

} // namespace tolvo
