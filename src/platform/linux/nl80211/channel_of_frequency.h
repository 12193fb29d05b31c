#pragma once

#include "platform/services/wifi_client.h"

#include <cstdint>

namespace tolvo {

/// The channel whose centre this frequency is, numbered as IEEE 802.11 does. Outside 2.4, 5 and 6 GHz the band is
/// unknown, and so is the number (0) of what isn't a channel at all.
WiFiChannel channelOfFrequency(std::uint32_t megahertz);

} // namespace tolvo
