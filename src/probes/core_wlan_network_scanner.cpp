#include "probes/core_wlan_network_scanner.h"

#include "core/text.h"
#include "probes/wifi_client_band.h"

namespace tolvo {

namespace {

std::optional<std::string> presentName(const std::optional<std::string>& ssid) {
    const std::string_view name = ssid ? trimmed(*ssid) : std::string_view();
    if (name.empty())
        return std::nullopt;
    return std::string(name);
}

} // namespace

Task<WiFiScanOutcome> CoreWLANNetworkScanner::scanNetworks() {
    if (!client_.currentLink())
        co_return std::unexpected(WiFiNetworkScannerError{WiFiNetworkScannerError::Kind::InterfaceUnavailable, {}});
    const WiFiClient::ScanOutcome found = co_await client_.scan();
    if (!found) {
        co_return std::unexpected(
            WiFiNetworkScannerError{WiFiNetworkScannerError::Kind::PlatformFailure, found.error().description});
    }
    std::vector<WiFiScannedNetwork> networks;
    networks.reserve(found->size());
    for (const WiFiNetwork& network : *found) {
        if (!network.channel)
            continue;
        networks.push_back({.ssid = presentName(network.ssid),
                            .bssid = network.bssid,
                            .rssiDbm = network.rssiValue,
                            .channelNumber = network.channel->channelNumber,
                            .band = wifiBand(network.channel->channelBand)});
    }
    co_return networks;
}

} // namespace tolvo
