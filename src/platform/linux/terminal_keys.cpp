#include "platform/linux/terminal_keys.h"

#include <algorithm>
#include <bit>

namespace tolvo {

namespace {

std::string take(std::string& input, std::size_t length) {
    std::string taken = input.substr(0, length);
    input.erase(0, length);
    return taken;
}

std::string nameOfSequence(const std::string& sequence) {
    switch (sequence.back()) {
    case 'A':
        return "up";
    case 'B':
        return "down";
    case 'C':
        return "right";
    case 'D':
        return "left";
    default:
        return {};
    }
}

/// An Escape, alone or as the begin of a control sequence.
std::optional<std::string> takeEscape(std::string& input, bool isInputComplete) {
    if (input.size() == 1 || (input[1] != '[' && input[1] != 'O')) {
        if (input.size() == 1 && !isInputComplete)
            return std::nullopt;
        take(input, 1);
        return "escape";
    }
    const auto end = std::find_if(input.begin() + 2, input.end(), [](char c) { return c >= '@' && c <= '~'; });
    if (end == input.end()) {
        if (!isInputComplete)
            return std::nullopt;
        input.clear();
        return std::string();
    }
    return nameOfSequence(take(input, static_cast<std::size_t>(end - input.begin()) + 1));
}

} // namespace

std::optional<std::string> takeTerminalKey(std::string& input, bool isInputComplete) {
    if (input.empty())
        return std::nullopt;
    if (input.front() == '\x1b')
        return takeEscape(input, isInputComplete);
    if (input.front() == '\n' || input.front() == '\r') {
        take(input, 1);
        return "enter";
    }
    const int leadingOnes = std::countl_one(static_cast<unsigned char>(input.front()));
    const std::size_t length = leadingOnes < 2 ? 1 : static_cast<std::size_t>(leadingOnes);
    if (length > input.size() && !isInputComplete)
        return std::nullopt;
    return take(input, length);
}

} // namespace tolvo
