#include "tools/tool.h"

#include "tools/text_output.h"

#include <algorithm>
#include <array>

namespace tolvo::tools {

namespace {

struct NamedTool {
    std::string_view name;
    int (*run)(ToolArguments);
};

constexpr std::array<NamedTool, 7> namedTools{{{"ping", runPing},
                                               {"ping6", runPing6},
                                               {"dig", runDig},
                                               {"netstat", runNetstat},
                                               {"scutil", runScutil},
                                               {"ifconfig", runIfconfig},
                                               {"ipconfig", runIpconfig}}};

const NamedTool* toolCalled(std::string_view name) {
    const auto found = std::ranges::find(namedTools, name, &NamedTool::name);
    return found == namedTools.end() ? nullptr : found;
}

std::string_view baseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

int runNamedTool(ToolArguments commandLine) {
    if (!commandLine.empty()) {
        if (const NamedTool* tool = toolCalled(baseName(commandLine[0])))
            return tool->run(commandLine.subspan(1));
    }
    if (commandLine.size() == 2 && commandLine[1] == "serve")
        return serveForks();
    if (commandLine.size() > 1) {
        if (const NamedTool* tool = toolCalled(commandLine[1]))
            return tool->run(commandLine.subspan(2));
    }
    return usageError("tolvo-tools ping|ping6|dig|netstat|scutil|ifconfig|ipconfig [ARGUMENT...]");
}

} // namespace tolvo::tools
