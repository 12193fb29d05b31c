#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

namespace tolvo {

/// The folder of our own system tools: TOLVO_TOOLS_DIR if it is set to an absolute path, else `tools` beside the
/// running program (as built), else where CMake installs them, seen from there (`../libexec/tolvo`).
std::filesystem::path toolsFolder();

/// Where each of the tools, known by a fixed path, stands: in that folder, under its own name.
std::map<std::string, std::string> toolPaths(const std::set<std::string>& fixedPaths,
                                             const std::filesystem::path& folder);

/// The one program that the names in that folder lead to, which can run them all from one process; empty when it is no
/// such folder.
std::string servingProgram(const std::filesystem::path& folder);

} // namespace tolvo
