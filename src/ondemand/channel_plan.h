#pragma once

#include "core/model/wifi_band.h"

#include <cstdint>
#include <span>

namespace tolvo {

// The channels that a recommendation is made from. They are the ones that an access point may use about everywhere
// without waiting for radar.

/// Channels of the band that are always looked at, ascending; none for the unknown band.
std::span<const std::int64_t> sampledChannels(WiFiBand band);

/// Channels of the band that may be recommended: in the 2.4 GHz band only the three that don't overlap each other.
std::span<const std::int64_t> recommendableChannels(WiFiBand band);

/// The absolute difference of two channel numbers, whatever they are.
std::uint64_t channelDistance(std::int64_t a, std::int64_t b);

/// Channels farther apart than this don't overlap.
std::uint64_t overlapReach(WiFiBand band);

/// How far a network covers a channel at this distance, 0 to 1. In the 2.4 GHz band channels are 5 MHz apart and 20 MHz
/// wide, so four neighbours are covered in part; elsewhere only the same channel counts.
double channelOverlap(WiFiBand band, std::uint64_t distance);

} // namespace tolvo
