#pragma once

#include "core/model/raw_value.h"
#include "core/model/wall_time.h"

#include <optional>

namespace tolvo {

enum class PingTarget { Router, Internet };

template<>
inline constexpr RawValueTable<PingTarget, 2> rawValueTable<PingTarget>{{
    {PingTarget::Router, "router"},
    {PingTarget::Internet, "internet"},
}};

/// One ping probe of one target.
struct PingResult {
    PingTarget target = PingTarget::Router;
    WallTime timestamp;
    /// Average round trip; absent when no reply arrived.
    std::optional<double> latencyMilliseconds;
    std::optional<double> jitterMilliseconds;
    /// 0 to 100.
    double packetLossPercent = 0;
    bool didSucceed = false;

    bool operator==(const PingResult&) const = default;
};

} // namespace tolvo
