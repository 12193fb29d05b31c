#include "platform/linux/tool_paths.h"

#include <cstdlib>
#include <system_error>

namespace tolvo {

std::filesystem::path toolsFolder() {
    if (const char* given = std::getenv("TOLVO_TOOLS_DIR"); given != nullptr && given[0] == '/')
        return given;
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return "/usr/libexec/tolvo";
    std::filesystem::path asBuilt = program.parent_path() / "tools";
    if (std::filesystem::is_directory(asBuilt, error))
        return asBuilt;
    return (program.parent_path() / TOLVO_INSTALLED_TOOLS).lexically_normal();
}

std::map<std::string, std::string> toolPaths(const std::set<std::string>& fixedPaths,
                                             const std::filesystem::path& folder) {
    std::map<std::string, std::string> paths;
    for (const std::string& fixedPath : fixedPaths)
        paths.emplace(fixedPath, folder / std::filesystem::path(fixedPath).filename());
    return paths;
}

std::string servingProgram(const std::filesystem::path& folder) {
    std::error_code error;
    const std::filesystem::path program = std::filesystem::canonical(folder / "netstat", error);
    return program.filename() == "tolvo-tools" ? program.string() : std::string();
}

} // namespace tolvo
