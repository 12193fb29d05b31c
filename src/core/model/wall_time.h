#pragma once

#include <chrono>
#include <functional>

namespace tolvo {

/// A point in time for display and reports. Waiting and ageing use the monotonic clock instead.
using WallTime = std::chrono::system_clock::time_point;

/// Gives the current date; the only clock that a monitor uses for its timestamps.
using DateProvider = std::function<WallTime()>;

} // namespace tolvo
