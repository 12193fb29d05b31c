#include "probes/wifi_link.h"

namespace tolvo {

namespace {

bool isFilled(const std::optional<std::string>& text) {
    return text && !text->empty();
}

} // namespace

bool isAssociated(const WiFiInterfaceSnapshot& reading) {
    return isFilled(reading.ssid) || isFilled(reading.bssid) || reading.channelNumber.has_value();
}

std::optional<std::int64_t> signalToNoiseRatioDb(std::int64_t rssiDbm, std::int64_t noiseFloorDbm) {
    const bool isSignalPlausible = rssiDbm >= -100 && rssiDbm <= 0;
    const bool isNoisePlausible = noiseFloorDbm >= -120 && noiseFloorDbm <= -20;
    if (!isSignalPlausible || !isNoisePlausible || rssiDbm <= noiseFloorDbm)
        return std::nullopt;
    return rssiDbm - noiseFloorDbm;
}

WiFiSnapshot linkSnapshot(const WiFiInterfaceSnapshot& reading, WallTime timestamp) {
    return WiFiSnapshot{
        .timestamp = timestamp,
        .interfaceName = reading.interfaceName,
        .ssid = reading.ssid,
        .bssid = reading.bssid,
        .rssiDbm = reading.rssiDbm,
        .noiseFloorDbm = reading.noiseFloorDbm,
        .snrDb = signalToNoiseRatioDb(reading.rssiDbm, reading.noiseFloorDbm),
        .linkRateMbps = reading.linkRateMbps,
        .channelNumber = reading.channelNumber,
        .band = reading.band,
        .ipAddress = std::nullopt,
        .isVPNActive = false,
    };
}

} // namespace tolvo
