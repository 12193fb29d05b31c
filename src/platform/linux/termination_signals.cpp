#include "platform/linux/termination_signals.h"

#include <fcntl.h>
#include <signal.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

constexpr std::array requests{SIGTERM, SIGINT, SIGHUP};

/// All that a handler may touch.
volatile sig_atomic_t handlersDescriptor = -1;

void tellLoop(int) {
    const int error = errno;
    const char byte = 0;
    // A full pipe tells as well.
    [[maybe_unused]] const ssize_t written = ::write(handlersDescriptor, &byte, 1);
    errno = error;
}

void setHandler(void (*handler)(int)) {
    struct sigaction action{};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : requests)
        ::sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals(MainLoop& loop, std::function<void()> onTerminate)
    : onTerminate_(std::move(onTerminate)) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe2");
    readEnd_ = UniqueDescriptor(ends[0]);
    writeEnd_ = UniqueDescriptor(ends[1]);
    watch_ = loop.watch(readEnd_.get(), DescriptorEvent::Readable, [this] {
        std::array<char, 16> bytes{};
        while (::read(readEnd_.get(), bytes.data(), bytes.size()) > 0) {
        }
        onTerminate_();
    });
    ::signal(SIGPIPE, SIG_IGN);
    handlersDescriptor = writeEnd_.get();
    setHandler(&tellLoop);
}

TerminationSignals::~TerminationSignals() {
    setHandler(SIG_DFL);
    handlersDescriptor = -1;
}

} // namespace tolvo
