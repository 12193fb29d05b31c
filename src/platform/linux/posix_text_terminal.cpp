#include "platform/linux/posix_text_terminal.h"

#include "platform/linux/terminal_keys.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <utility>

namespace tolvo {

namespace {

// The alternate screen, without cursor and line wrapping, and the way back.
constexpr std::string_view takeScreen = "\x1b[?1049h\x1b[?25l\x1b[?7l\x1b[H\x1b[2J";
constexpr std::string_view giveScreenBack = "\x1b[0m\x1b[?7h\x1b[?25h\x1b[?1049l";

/// The bytes of a cursor key arrive together; an Escape that stays alone this long was the key itself.
constexpr Seconds escapeDelay(0.05);

/// Milliseconds that a slow terminal gets to take what gives the screen back.
constexpr int farewellPatience = 300;

/// A terminal takes a write with room for a single byte, and then waits for the rest, with this thread and its signals.
/// Only a description of our own may refuse to wait: the other is the shell's as well.
UniqueDescriptor openTerminalWithoutWaiting() {
    if (isatty(STDOUT_FILENO) != 1)
        return {};
    return UniqueDescriptor(::open("/proc/self/fd/1", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

} // namespace

PosixTextTerminal::PosixTextTerminal(MainLoop& loop) : loop_(loop), ownOutput_(openTerminalWithoutWaiting()) {}

bool PosixTextTerminal::isInteractive() const {
    return isatty(STDOUT_FILENO) == 1;
}

TextTerminal::Size PosixTextTerminal::size() const {
    winsize window{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0 || window.ws_col == 0 || window.ws_row == 0)
        return {};
    return {window.ws_col, window.ws_row};
}

void PosixTextTerminal::enterScreen(std::function<void(std::string key)> onKey) {
    onKey_ = std::move(onKey);
    hasScreen_ = true;
    write(takeScreen);
    termios mode{};
    if (tcgetattr(STDIN_FILENO, &mode) != 0)
        return;
    cookedMode_ = mode;
    mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    mode.c_cc[VMIN] = 0;
    mode.c_cc[VTIME] = 0;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &mode);
    inputWatch_ = loop_.watch(STDIN_FILENO, DescriptorEvent::Readable, [this] { readKeys(); });
}

void PosixTextTerminal::leaveScreen() {
    inputWatch_.reset();
    escapeTimer_.reset();
    if (const auto mode = std::exchange(cookedMode_, std::nullopt))
        tcsetattr(STDIN_FILENO, TCSANOW, &*mode);
    if (!std::exchange(hasScreen_, false))
        return;
    // What is left of a drawing must not stand in the way.
    unwritten_ = giveScreenBack;
    waitForOutput(farewellPatience);
    sendUnwritten();
}

int PosixTextTerminal::output() const {
    return ownOutput_ ? ownOutput_.get() : STDOUT_FILENO;
}

bool PosixTextTerminal::waitForOutput(int milliseconds) const {
    pollfd descriptor{output(), POLLOUT, 0};
    return ::poll(&descriptor, 1, milliseconds) == 1;
}

/// Whether the output is still open. A pipe that is ready takes as many bytes as this without waiting.
bool PosixTextTerminal::sendUnwritten() {
    while (!unwritten_.empty() && waitForOutput(0)) {
        const ssize_t written =
            ::write(output(), unwritten_.data(), std::min<std::size_t>(unwritten_.size(), PIPE_BUF));
        if (written < 0 && errno != EINTR)
            return errno == EAGAIN;
        unwritten_.erase(0, static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

TextTerminal::WriteOutcome PosixTextTerminal::write(std::string_view text) {
    if (!sendUnwritten())
        return WriteOutcome::Closed;
    if (!unwritten_.empty())
        return WriteOutcome::Skipped;
    unwritten_ = text;
    if (!sendUnwritten())
        return WriteOutcome::Closed;
    if (unwritten_.size() < text.size() || text.empty())
        return WriteOutcome::Written;
    unwritten_.clear();
    return WriteOutcome::Skipped;
}

void PosixTextTerminal::readKeys() {
    std::array<char, 256> buffer{};
    const ssize_t size = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (size <= 0) {
        // A terminal that is gone stays readable for ever.
        inputWatch_.reset();
        return;
    }
    pendingInput_.append(buffer.data(), static_cast<std::size_t>(size));
    giveKeys(false);
    if (!pendingInput_.empty())
        escapeTimer_ = loop_.after(escapeDelay, [this] { giveKeys(true); });
}

void PosixTextTerminal::giveKeys(bool isInputComplete) {
    while (auto key = takeTerminalKey(pendingInput_, isInputComplete)) {
        if (!key->empty())
            onKey_(std::move(*key));
    }
}

} // namespace tolvo
