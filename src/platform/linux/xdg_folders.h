#pragma once

#include <filesystem>
#include <optional>

namespace tolvo {

/// Where the user's settings go: XDG_CONFIG_HOME if it is an absolute path, else `.config` in the home directory;
/// nothing when the environment names neither. It need not exist.
std::optional<std::filesystem::path> userConfigFolder();

} // namespace tolvo
