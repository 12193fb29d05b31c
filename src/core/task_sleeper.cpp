#include "core/task_sleeper.h"

#include "core/async/sleep.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace tolvo {

Task<void> TaskSleeper::sleep(double seconds) {
    const auto nanoseconds = static_cast<std::int64_t>(std::max(seconds, 0.0) * 1e9);
    if (nanoseconds == 0)
        co_return;
    co_await sleepFor(std::chrono::nanoseconds(nanoseconds));
}

} // namespace tolvo
