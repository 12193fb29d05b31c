#pragma once

#include "probes/wifi_network_scanning.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

/// One access point in range.
struct RadarNearbyNetwork {
    /// The access point's address; without one, the name with the signal.
    std::string id;
    /// Never empty for a hidden network: those are named by their channel.
    std::string ssid;
    /// Of its strongest detection in the scan.
    std::int64_t signalDbm = 0;
    std::int64_t channelNumber = 0;
    WiFiBand band = WiFiBand::Unknown;

    bool operator==(const RadarNearbyNetwork&) const = default;
};

/// One entry an access point, the strongest first. Networks without an address are told apart by name, channel and
/// band.
std::vector<RadarNearbyNetwork> nearbyNetworksOf(const std::vector<WiFiScannedNetwork>& scan);

/// Without the network that the machine is on, all its access points included; everything when its name isn't known.
/// ASCII letters compare without case.
std::vector<RadarNearbyNetwork> otherNetworks(std::vector<RadarNearbyNetwork> networks,
                                              std::optional<std::string_view> currentSSID);

} // namespace tolvo
