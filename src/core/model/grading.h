#pragma once

#include "core/model/dns_result.h"
#include "core/model/ping_result.h"
#include "core/model/signal_quality.h"

#include <optional>

namespace tolvo {

// Grades of single measurements. An absent result has no grade; a failed one, or one without the value, is poor.

/// Good up to and including 50 ms, warning up to and including 100 ms.
std::optional<SignalQuality> latencyQuality(const std::optional<PingResult>& result);

/// Good below 10 ms, warning up to and including 30 ms.
std::optional<SignalQuality> jitterQuality(const std::optional<PingResult>& result);

/// Good below 50 ms (unlike a ping, exactly 50 ms is not), warning up to and including 100 ms.
std::optional<SignalQuality> latencyQuality(const std::optional<DNSResult>& result);

/// The grade of a query time; absent means that the look-up had no answer.
SignalQuality queryTimeQuality(std::optional<double> milliseconds);

} // namespace tolvo
