#include "platform/linux/standard_error_progress.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

namespace tolvo {

namespace {

constexpr std::size_t barLength = 30;

std::string barLine(double share, const std::string& message) {
    const auto filled = static_cast<std::size_t>(std::clamp(share, 0.0, 1.0) * barLength);
    return "[" + std::string(filled, '#') + std::string(barLength - filled, ' ') + "] " + message;
}

/// A line that wraps could not be drawn over.
std::size_t columnsOfTerminal() {
    winsize window{};
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &window) == 0 && window.ws_col > 0;
    return isKnown ? window.ws_col - 1U : 79;
}

} // namespace

StandardErrorProgress::StandardErrorProgress() : isTerminal_(isatty(STDERR_FILENO) == 1) {}

void StandardErrorProgress::show(double share, const std::string& message) {
    const std::string line = isTerminal_ ? barLine(share, message).substr(0, columnsOfTerminal()) : message;
    if (line == shown_)
        return;
    shown_ = line;
    std::fprintf(stderr, isTerminal_ ? "\r\x1b[K%s" : "%s\n", line.c_str());
    std::fflush(stderr);
}

void StandardErrorProgress::finish(const std::string& message) {
    std::fprintf(stderr, isTerminal_ ? "\r\x1b[K%s\n" : "%s\n", message.c_str());
}

} // namespace tolvo
