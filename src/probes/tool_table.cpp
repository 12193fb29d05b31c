#include "probes/tool_table.h"

namespace tolvo {

std::set<std::string> allowedToolPaths() {
    std::set<std::string> paths;
    for (const SystemTool& tool : toolTable)
        paths.emplace(tool.path);
    return paths;
}

} // namespace tolvo
