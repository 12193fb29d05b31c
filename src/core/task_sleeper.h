#pragma once

#include "core/sleep_providing.h"

namespace tolvo {

/// Sleeps on the loop of the calling task. A sleep of less than a nanosecond returns at once, cancelled or not.
class TaskSleeper final : public SleepProviding {
public:
    TaskSleeper() = default;
    Task<void> sleep(double seconds) override;
};

} // namespace tolvo
