#include "platform/linux/standard_error_progress.h"

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

} // namespace

StandardErrorProgress::StandardErrorProgress() : isTerminal_(isatty(STDERR_FILENO) == 1) {}

void StandardErrorProgress::show(double share, const std::string& message) {
    const std::string line = isTerminal_ ? barLine(share, message) : message;
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
