#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"

#include <functional>

namespace tolvo {

/// Turns a request to end (SIGTERM, SIGINT or SIGHUP) into a call on the main loop, for programs that start others
/// without our process service: it blocks no signal, which those would inherit, and its handlers end with an exec.
/// SIGPIPE is ignored. At most one at a time. Main thread only.
class TerminationSignals {
public:
    TerminationSignals(MainLoop& loop, std::function<void()> onTerminate);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

private:
    std::function<void()> onTerminate_;
    UniqueDescriptor readEnd_;
    UniqueDescriptor writeEnd_;
    LoopRegistration watch_;
};

} // namespace tolvo
