#pragma once

#include "core/async/task.h"

#include <optional>
#include <string>

namespace tolvo {

/// Times a look-up at the system's resolver.
class DNSLookupRunning {
public:
    DNSLookupRunning(const DNSLookupRunning&) = delete;
    DNSLookupRunning& operator=(const DNSLookupRunning&) = delete;
    virtual ~DNSLookupRunning() = default;

    /// The query time in milliseconds; nothing when the look-up failed or was cancelled. The time-out is in seconds.
    virtual Task<std::optional<double>> queryTime(std::string domain, double timeout) = 0;

protected:
    DNSLookupRunning() = default;
};

} // namespace tolvo
