#pragma once

#include "core/model/signal_quality.h"
#include "core/model/wall_time.h"

#include <cstdint>

namespace tolvo {

/// Socket counts by TCP state.
struct TCPConnectionStateCounts {
    std::int64_t established = 0;
    std::int64_t timeWait = 0;
    std::int64_t closeWait = 0;

    std::int64_t totalCount() const { return established + timeWait + closeWait; }
    /// Sockets whose connection is over or closing and which still hold a table entry.
    std::int64_t orphanedCount() const { return timeWait + closeWait; }

    bool operator==(const TCPConnectionStateCounts&) const = default;
};

/// One reading of TCP pressure, with the grade that the connection monitor gave it.
struct ConnectionPressureResult {
    WallTime timestamp;
    TCPConnectionStateCounts counts;
    SignalQuality quality = SignalQuality::Poor;

    bool operator==(const ConnectionPressureResult&) const = default;
};

} // namespace tolvo
