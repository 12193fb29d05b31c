#include "platform/linux/xdg_folders.h"

#include <cstdlib>

namespace tolvo {

namespace {

std::optional<std::filesystem::path> absolutePathIn(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || value[0] != '/')
        return std::nullopt;
    return value;
}

} // namespace

std::optional<std::filesystem::path> userConfigFolder() {
    if (auto folder = absolutePathIn("XDG_CONFIG_HOME"))
        return folder;
    if (const auto home = absolutePathIn("HOME"))
        return *home / ".config";
    return std::nullopt;
}

} // namespace tolvo
