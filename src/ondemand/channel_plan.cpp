#include "ondemand/channel_plan.h"

#include <array>
#include <utility>

namespace tolvo {

namespace {

constexpr std::array<std::int64_t, 11> twoPointFourSampled{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
constexpr std::array<std::int64_t, 3> twoPointFourRecommendable{1, 6, 11};
constexpr std::array<std::int64_t, 9> fiveChannels{36, 40, 44, 48, 149, 153, 157, 161, 165};
constexpr std::array<std::int64_t, 8> sixChannels{1, 5, 9, 13, 17, 21, 25, 29};

} // namespace

std::span<const std::int64_t> sampledChannels(WiFiBand band) {
    if (band == WiFiBand::TwoPointFourGigahertz)
        return twoPointFourSampled;
    return recommendableChannels(band);
}

std::span<const std::int64_t> recommendableChannels(WiFiBand band) {
    switch (band) {
    case WiFiBand::TwoPointFourGigahertz:
        return twoPointFourRecommendable;
    case WiFiBand::FiveGigahertz:
        return fiveChannels;
    case WiFiBand::SixGigahertz:
        return sixChannels;
    case WiFiBand::Unknown:
        return {};
    }
    std::unreachable();
}

std::uint64_t channelDistance(std::int64_t a, std::int64_t b) {
    // Unsigned, so that no pair of numbers overflows.
    const auto low = static_cast<std::uint64_t>(a < b ? a : b);
    const auto high = static_cast<std::uint64_t>(a < b ? b : a);
    return high - low;
}

std::uint64_t overlapReach(WiFiBand band) {
    return band == WiFiBand::TwoPointFourGigahertz ? 4 : 0;
}

double channelOverlap(WiFiBand band, std::uint64_t distance) {
    if (band == WiFiBand::Unknown || distance > overlapReach(band))
        return 0;
    return band == WiFiBand::TwoPointFourGigahertz ? (5.0 - static_cast<double>(distance)) / 5.0 : 1.0;
}

} // namespace tolvo
