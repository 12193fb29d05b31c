#include "tools/text_output.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace tolvo::tools {

namespace {

bool writeAll(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

std::optional<std::int64_t> parseNumber(std::string_view text, std::int64_t least, std::int64_t most) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size() || number < least || number > most)
        return std::nullopt;
    return number;
}

void appendNumber(std::string& out, std::uint64_t number) {
    std::array<char, 20> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    out.append(digits.data(), end);
}

void appendColumn(std::string& out, std::string_view text, std::size_t width) {
    out += text;
    out.append(text.size() < width ? width - text.size() : 1, ' ');
}

std::string printable(std::string_view text) {
    std::string result(text);
    std::ranges::replace_if(result, [](char c) { return c < ' ' || c > '~'; }, '?');
    return result;
}

ToolResult succeeded(std::string output) {
    return {exitStatus::Success, std::move(output), {}};
}

ToolResult failed(std::string_view line, int status) {
    return {status, {}, std::string(line) + '\n'};
}

ToolResult usageError(std::string_view usage) {
    return failed("usage: " + std::string(usage), exitStatus::Usage);
}

ToolResult systemError(std::string_view tool, std::string_view what, int errorNumber) {
    return failed(std::string(tool) + ": " + std::string(what) + ": " + std::strerror(errorNumber), exitStatus::System);
}

int deliver(const ToolResult& result) {
    if (!writeAll(STDOUT_FILENO, result.output))
        return deliver(systemError("tolvo-tools", "writing the output", errno));
    writeAll(STDERR_FILENO, result.errors);
    return result.status;
}

} // namespace tolvo::tools
