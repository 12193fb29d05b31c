#include "tools/tool.h"

#include <string_view>
#include <vector>

int main(int argc, char** argv) {
    const std::vector<std::string_view> commandLine(argv, argv + argc);
    return tolvo::tools::runProgram(commandLine);
}
