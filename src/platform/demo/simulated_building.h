#pragma once

#include "platform/services/wifi_client.h"

#include <cstdint>
#include <span>

namespace tolvo {

/// A point of the building's one floor, in metres.
struct FloorPosition {
    double x = 0;
    double y = 0;
};

struct SimulatedAccessPoint {
    /// Null for a hidden network.
    const char* ssid;
    const char* bssid;
    FloorPosition position;
    WiFiChannel channel;
    double transmitPowerDbm;
};

/// All access points in range: first the two of the own network, then those of neighbours.
std::span<const SimulatedAccessPoint> simulatedAccessPoints();
inline constexpr std::size_t ownAccessPointCount = 2;

/// Where somebody is who walks the same tour through the building again and again.
FloorPosition positionOnTour(double seconds);
double secondsOfTour();

/// The mean level at that place, by the log-distance law for offices; in dBm.
double meanSignalDbm(const SimulatedAccessPoint& accessPoint, FloorPosition position);

/// The best rate that the ratio of signal to noise allows with two antennas: 80 MHz wide at 5 GHz, 20 MHz at 2.4 GHz.
double rateMbps(WiFiChannelBand band, double snrDb);

/// A number from 0 to 1 that depends on its arguments only.
double simulatedChance(std::uint64_t seed, std::uint64_t stream, std::uint64_t index);

} // namespace tolvo
