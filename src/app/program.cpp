#include "app/program.h"

#include "platform/linux/built_bundle_information.h"
#include "platform/linux/standard_descriptors.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <exception>
#include <span>
#include <string_view>

namespace tolvo {

namespace {

bool printHelp(const ProgramDescription& program) {
    std::printf("Usage: %s [--help | --version]\n\n%s\n", program.name, program.help);
    return true;
}

bool printVersion(const ProgramDescription& program) {
    const BuiltBundleInformation bundle;
    std::printf("%s %s\n", program.name,
                bundle.objectForInfoDictionaryKey("CFBundleShortVersionString").value_or("").c_str());
    return true;
}

bool answersArguments(const ProgramDescription& program, std::span<char* const> arguments) {
    const auto has = [arguments](std::string_view wanted) {
        return std::ranges::any_of(arguments, [wanted](const char* argument) { return argument == wanted; });
    };
    return (has("--help") && printHelp(program)) || (has("--version") && printVersion(program));
}

} // namespace

int runProgram(const ProgramDescription& program, int argumentCount, char** arguments) {
    openStandardDescriptors();
    std::setlocale(LC_ALL, "");
    try {
        if (answersArguments(program, {arguments, static_cast<std::size_t>(argumentCount)}))
            return std::fflush(stdout) == 0 ? 0 : 1;
        return program.run(argumentCount, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", program.name, error.what());
        return 1;
    }
}

bool refusesArguments(const char* programName, int argumentCount, char** arguments) {
    if (argumentCount <= 1)
        return false;
    std::fprintf(stderr, "%s: unknown argument \"%s\"; see %s --help\n", programName, arguments[1], programName);
    return true;
}

} // namespace tolvo
