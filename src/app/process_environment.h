#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tolvo {

/// A variable of the process's environment. Read once, at start, on the main thread.
inline std::optional<std::string> environmentVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace tolvo
