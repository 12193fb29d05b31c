#include "platform/linux/posix_text_terminal.h"

#include "platform/linux/terminal_keys.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace tolvo {

namespace {

// The alternate screen, without cursor and line wrapping, and the way back.
constexpr std::string_view takeScreen = "\x1b[?1049h\x1b[?25l\x1b[?7l\x1b[H\x1b[2J";
constexpr std::string_view giveScreenBack = "\x1b[0m\x1b[?7h\x1b[?25h\x1b[?1049l";

/// The bytes of a cursor key arrive together; an Escape that stays alone this long was the key itself.
constexpr Seconds escapeDelay(0.05);

} // namespace

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
    if (std::exchange(hasScreen_, false))
        write(giveScreenBack);
}

bool PosixTextTerminal::takesOutput() const {
    pollfd output{STDOUT_FILENO, POLLOUT, 0};
    return ::poll(&output, 1, 0) == 1;
}

TextTerminal::WriteOutcome PosixTextTerminal::write(std::string_view text) {
    if (isInteractive() && !takesOutput())
        return WriteOutcome::Skipped;
    while (!text.empty()) {
        const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return WriteOutcome::Closed;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return WriteOutcome::Written;
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
