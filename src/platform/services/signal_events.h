#pragma once

#include <functional>

namespace tolvo {

/// What other programs and the terminal tell this one by signals. The callbacks run on the main thread.
struct SignalEvents {
    /// Interrupt, terminate or hang-up: the program is to end cleanly.
    std::function<void()> onTerminate{};
    std::function<void()> onWindowResize{};
    /// The user stops the job: called before it stops, and again after it went on.
    std::function<void()> onSuspend{};
    std::function<void()> onContinue{};
};

} // namespace tolvo
