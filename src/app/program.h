#pragma once

namespace tolvo {

struct ProgramDescription {
    const char* name;
    /// What --help says: a sentence or more, without a line's end.
    const char* help;
    /// Gets the arguments besides --help and --version.
    int (*run)(int argumentCount, char** arguments);
};

/// The exit status for arguments that a program doesn't know.
inline constexpr int usageStatus = 2;

/// A program's main function: answers --help and --version, sees to the standard descriptors and the locale, and turns
/// what is thrown into a message and the exit status 1.
int runProgram(const ProgramDescription& program, int argumentCount, char** arguments);

/// Where a program that takes no more arguments got some: says so and gives true.
bool refusesArguments(const char* programName, int argumentCount, char** arguments);

} // namespace tolvo
