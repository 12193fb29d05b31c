#pragma once

#include "core/async/task.h"

namespace tolvo {

/// The seam through which all sleeping of the monitors passes.
class SleepProviding {
public:
    SleepProviding(const SleepProviding&) = delete;
    SleepProviding& operator=(const SleepProviding&) = delete;
    virtual ~SleepProviding() = default;

    /// Returns when the time has passed; throws CancellationError if the calling task is cancelled first. The seconds
    /// are finite and fit 64-bit nanoseconds.
    virtual Task<void> sleep(double seconds) = 0;

protected:
    SleepProviding() = default;
};

} // namespace tolvo
