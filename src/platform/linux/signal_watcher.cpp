#include "platform/linux/signal_watcher.h"

#include <pthread.h>
#include <signal.h>
#include <sys/signalfd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

sigset_t watchedSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGWINCH, SIGTSTP})
        sigaddset(&signals, number);
    return signals;
}

void call(const std::function<void()>& callback) {
    if (callback)
        callback();
}

} // namespace

SignalWatcher::SignalWatcher(MainLoop& loop, SignalEvents events) : events_(std::move(events)) {
    const sigset_t signals = watchedSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    ::signal(SIGPIPE, SIG_IGN);
    descriptor_ = UniqueDescriptor(signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!descriptor_)
        throw std::system_error(errno, std::generic_category(), "signalfd");
    watch_ = loop.watch(descriptor_.get(), DescriptorEvent::Readable, [this] { readSignals(); });
}

void SignalWatcher::readSignals() {
    signalfd_siginfo info;
    while (::read(descriptor_.get(), &info, sizeof info) == sizeof info) {
        switch (info.ssi_signo) {
        case SIGWINCH:
            call(events_.onWindowResize);
            break;
        case SIGTSTP:
            suspend();
            break;
        default:
            call(events_.onTerminate);
        }
    }
}

void SignalWatcher::suspend() const {
    call(events_.onSuspend);
    ::raise(SIGSTOP);
    call(events_.onContinue);
}

} // namespace tolvo
