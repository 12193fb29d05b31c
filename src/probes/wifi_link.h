#pragma once

#include "core/model/wifi_snapshot.h"
#include "probes/wifi_interface_providing.h"

#include <cstdint>
#include <optional>

namespace tolvo {

// What everyone who polls the Wi-Fi interface makes of one reading.

/// Whether the interface is attached to a network: it has a name, an access point or a channel. Without permission to
/// read names, the channel alone tells.
bool isAssociated(const WiFiInterfaceSnapshot& reading);

/// The signal-to-noise ratio; nothing when a level is out of the range that a radio can measure (signal -100 to 0 dBm,
/// noise -120 to -20 dBm) or when the signal isn't above the noise.
std::optional<std::int64_t> signalToNoiseRatioDb(std::int64_t rssiDbm, std::int64_t noiseFloorDbm);

/// The reading as a snapshot, with its ratio, without address and with no VPN.
WiFiSnapshot linkSnapshot(const WiFiInterfaceSnapshot& reading, WallTime timestamp);

} // namespace tolvo
