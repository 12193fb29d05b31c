#include "platform/linux/nl80211/channel_of_frequency.h"

namespace tolvo {

namespace {

/// A raster of channels: the numbers follow from the distance to the start.
struct Raster {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t start;
    std::uint32_t spacing;
    WiFiChannelBand band;
};

// IEEE 802.11-2020, annex E; 6 GHz from 802.11ax; 60 GHz from 802.11ad and ay. Channel 14 and the 6 GHz channel 2
// stand off their rasters.
constexpr Raster rasters[] = {
    {2412, 2472, 2407, 5, WiFiChannelBand::TwoGigahertz}, {2484, 2484, 2470, 1, WiFiChannelBand::TwoGigahertz},
    {4910, 4980, 4000, 5, WiFiChannelBand::Unknown},      {5035, 5895, 5000, 5, WiFiChannelBand::FiveGigahertz},
    {5935, 5935, 5925, 5, WiFiChannelBand::SixGigahertz}, {5955, 7115, 5950, 5, WiFiChannelBand::SixGigahertz},
    {58320, 70200, 56160, 2160, WiFiChannelBand::Unknown}};

} // namespace

WiFiChannel channelOfFrequency(std::uint32_t megahertz) {
    for (const Raster& raster : rasters) {
        const bool isInRange = megahertz >= raster.first && megahertz <= raster.last;
        if (isInRange && (megahertz - raster.start) % raster.spacing == 0)
            return {(megahertz - raster.start) / raster.spacing, raster.band};
    }
    return {};
}

} // namespace tolvo
