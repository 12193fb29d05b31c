#pragma once

#include "core/model/wifi_band.h"
#include "platform/services/wifi_client.h"

namespace tolvo {

/// The band of a record for the platform's value; a value that is not one of the three is unknown.
constexpr WiFiBand wifiBand(WiFiChannelBand channelBand) {
    switch (channelBand) {
    case WiFiChannelBand::TwoGigahertz:
        return WiFiBand::TwoPointFourGigahertz;
    case WiFiChannelBand::FiveGigahertz:
        return WiFiBand::FiveGigahertz;
    case WiFiChannelBand::SixGigahertz:
        return WiFiBand::SixGigahertz;
    case WiFiChannelBand::Unknown:
        break;
    }
    return WiFiBand::Unknown;
}

} // namespace tolvo
