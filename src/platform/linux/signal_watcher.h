#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/services/signal_events.h"

namespace tolvo {

/// Turns the signals that a program in a terminal gets into calls on the main loop, through a signalfd. It is made
/// before any thread is started, since it blocks them in this thread and all later ones; SIGPIPE it ignores. Programs
/// that are started must get an empty signal mask.
class SignalWatcher {
public:
    SignalWatcher(MainLoop& loop, SignalEvents events);
    SignalWatcher(const SignalWatcher&) = delete;
    SignalWatcher& operator=(const SignalWatcher&) = delete;

private:
    void readSignals();
    void suspend() const;

    SignalEvents events_;
    UniqueDescriptor descriptor_;
    LoopRegistration watch_;
};

} // namespace tolvo
