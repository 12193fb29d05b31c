#include "ondemand/wifi_radar_nearby_networks.h"

#include "core/text.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <unordered_map>

namespace tolvo {

namespace {

std::string networkKey(const WiFiScannedNetwork& network) {
    if (network.bssid)
        return *network.bssid;
    return network.ssid.value_or("hidden") + "|" + std::to_string(network.channelNumber) + "|" +
           std::string(rawValue(network.band));
}

RadarNearbyNetwork nearbyNetworkOf(const WiFiScannedNetwork& network) {
    const std::string name = network.ssid.value_or("Hidden-" + std::to_string(network.channelNumber));
    return {
        .id = network.bssid.value_or(name + "|" + std::to_string(network.rssiDbm)),
        .ssid = name,
        .signalDbm = network.rssiDbm,
        .channelNumber = network.channelNumber,
        .band = network.band,
    };
}

} // namespace

std::vector<RadarNearbyNetwork> nearbyNetworksOf(const std::vector<WiFiScannedNetwork>& scan) {
    std::unordered_map<std::string, std::size_t> positions;
    std::vector<RadarNearbyNetwork> networks;
    for (const WiFiScannedNetwork& network : scan) {
        const auto [entry, isNew] = positions.try_emplace(networkKey(network), networks.size());
        if (isNew)
            networks.push_back(nearbyNetworkOf(network));
        else if (RadarNearbyNetwork& stored = networks[entry->second]; stored.signalDbm < network.rssiDbm)
            stored = nearbyNetworkOf(network);
    }
    std::ranges::sort(networks, std::greater(), [](const RadarNearbyNetwork& network) {
        return std::tuple(network.signalDbm, std::string_view(network.id));
    });
    return networks;
}

std::vector<RadarNearbyNetwork> otherNetworks(std::vector<RadarNearbyNetwork> networks,
                                              std::optional<std::string_view> currentSSID) {
    const std::string current = lowerCased(trimmed(currentSSID.value_or("")));
    if (!current.empty())
        std::erase_if(networks, [&](const auto& network) { return lowerCased(trimmed(network.ssid)) == current; });
    return networks;
}

} // namespace tolvo
