#pragma once

#include "core/model/channel_scan_result.h"
#include "ondemand/channel_scan_aggregation.h"

#include <optional>
#include <span>

namespace tolvo {

/// Where the machine is when the passes are done.
struct CurrentChannel {
    std::optional<std::int64_t> channelNumber;
    std::optional<WiFiBand> band;
};

/// Scores every channel of every band in play and recommends one of the band in use. A network weighs by how often it
/// was seen, how loud it was and how far it covers the channel; the network that the machine is on counts like any
/// other. Takes time in proportion to the networks, and no notice of their order.
ChannelScanResult analyzeChannelScan(std::span<const ChannelScanPass> passes, std::int64_t passCount,
                                     const CurrentChannel& current, WallTime timestamp);

} // namespace tolvo
