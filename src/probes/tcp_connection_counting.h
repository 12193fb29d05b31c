#pragma once

#include "core/async/task.h"
#include "core/model/connection_pressure_result.h"

#include <optional>

namespace tolvo {

/// Counts the machine's TCP sockets by state.
class TCPConnectionCounting {
public:
    TCPConnectionCounting(const TCPConnectionCounting&) = delete;
    TCPConnectionCounting& operator=(const TCPConnectionCounting&) = delete;
    virtual ~TCPConnectionCounting() = default;

    /// Nothing when the count failed or was cancelled; three zeros are a count. The time-out is in seconds.
    virtual Task<std::optional<TCPConnectionStateCounts>> connectionCounts(double timeout) = 0;

protected:
    TCPConnectionCounting() = default;
};

} // namespace tolvo
