#pragma once

#include <span>
#include <string_view>

namespace tolvo::tools {

/// What follows the tool's name. Each view is one argument of the process and ends with a NUL.
using ToolArguments = std::span<const std::string_view>;

/// Exit statuses that the tools share. Usage, Unavailable and System are those of sysexits.h.
namespace exitStatus {
inline constexpr int Success = 0;
inline constexpr int NothingFound = 1;
inline constexpr int Usage = 64;
inline constexpr int Unavailable = 69;
inline constexpr int System = 71;
} // namespace exitStatus

// One function a tool; each gives the exit status.

/// -c COUNT [-W MILLISECONDS] HOST. Becomes the installed ping for a name, and where it may not ping itself.
int runPing(ToolArguments arguments);
/// -c COUNT HOST
int runPing6(ToolArguments arguments);
/// [+time=SECONDS] [+tries=COUNT] DOMAIN
int runDig(ToolArguments arguments);
/// -n -p tcp, or -rn [-f inet|inet6]
int runNetstat(ToolArguments arguments);
/// --nc list
int runScutil(ToolArguments arguments);
/// No arguments.
int runIfconfig(ToolArguments arguments);
/// getifaddr INTERFACE, or getoption INTERFACE router
int runIpconfig(ToolArguments arguments);

/// Runs a tool in a fork for each request on descriptor 3, a socket that keeps messages apart, until that closes. A
/// request is the command line, each argument with a NUL behind it, with the outputs' two descriptors; the answer is
/// the fork's process id. The forks are children of who started this program.
int serveForks();

/// Runs the tool that the program's own name says, else the one that its first argument names.
int runNamedTool(ToolArguments commandLine);

} // namespace tolvo::tools
