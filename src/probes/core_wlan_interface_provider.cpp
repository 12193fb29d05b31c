#include "probes/core_wlan_interface_provider.h"

#include "probes/wifi_client_band.h"

#include <cmath>

namespace tolvo {

namespace {

/// Beyond any radio; what isn't a number below it is no rate.
constexpr double highestRateMbps = 1e9;

std::optional<std::int64_t> linkRateMbps(double transmitRate) {
    const double rounded = std::round(transmitRate);
    if (rounded >= 1 && rounded <= highestRateMbps)
        return static_cast<std::int64_t>(rounded);
    return std::nullopt;
}

} // namespace

std::optional<WiFiInterfaceSnapshot> CoreWLANInterfaceProvider::currentSnapshot() {
    const std::optional<WiFiLink> link = client_.currentLink();
    if (!link)
        return std::nullopt;
    WiFiInterfaceSnapshot snapshot{.interfaceName = link->interfaceName.value_or("en0"),
                                   .ssid = link->ssid,
                                   .bssid = link->bssid,
                                   .rssiDbm = link->rssiValue,
                                   .noiseFloorDbm = link->noiseMeasurement,
                                   .linkRateMbps = linkRateMbps(link->transmitRate),
                                   .channelNumber = std::nullopt,
                                   .band = std::nullopt};
    if (link->channel) {
        snapshot.channelNumber = link->channel->channelNumber;
        snapshot.band = wifiBand(link->channel->channelBand);
    }
    return snapshot;
}

} // namespace tolvo
