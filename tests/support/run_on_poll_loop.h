#pragma once

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"

#include <functional>

namespace tolvo::testing {

/// Runs the loop until the condition holds, at most so long, and says whether it does.
inline bool runUntil(PollLoop& loop, const std::function<bool()>& condition, double limitSeconds = 30) {
    const auto limit = loop.now() + std::chrono::duration_cast<MonotonicTime::duration>(Seconds(limitSeconds));
    while (!condition() && loop.now() < limit) {
        const auto nextLook = loop.after(Seconds(0.001), [&] { loop.quit(); });
        loop.run();
    }
    return condition();
}

} // namespace tolvo::testing
