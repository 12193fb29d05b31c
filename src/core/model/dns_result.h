#pragma once

#include "core/model/wall_time.h"

#include <optional>
#include <string>

namespace tolvo {

/// One timed look-up.
struct DNSResult {
    std::string domain;
    WallTime timestamp;
    /// The resolver's query time.
    std::optional<double> latencyMilliseconds;
    bool didSucceed = false;

    bool operator==(const DNSResult&) const = default;
};

} // namespace tolvo
