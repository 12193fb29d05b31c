#pragma once

#include "core/async/task.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tolvo::tools {

/// What follows the tool's name.
using ToolArguments = std::span<const std::string_view>;

/// Exit statuses that the tools share. Usage, Unavailable and System are those of sysexits.h.
namespace exitStatus {
inline constexpr int Success = 0;
inline constexpr int NothingFound = 1;
inline constexpr int Usage = 64;
inline constexpr int Unavailable = 69;
inline constexpr int System = 71;
} // namespace exitStatus

struct ToolResult {
    int status = exitStatus::Success;
    std::string output;
    std::string errors;
};

/// A result that needs no waiting.
Task<ToolResult> given(ToolResult result);

// Those that only ask the kernel answer at once; those that wait for the network do so on a loop, so that many can run
// in one process. They hold no argument once they have returned.

/// -n -p tcp, or -rn [-f inet|inet6]
ToolResult runNetstat(ToolArguments arguments);
/// No arguments.
ToolResult runIfconfig(ToolArguments arguments);
/// getifaddr INTERFACE, or getoption INTERFACE router
ToolResult runIpconfig(ToolArguments arguments);
/// [+time=SECONDS] [+tries=COUNT] DOMAIN
Task<ToolResult> runDig(ToolArguments arguments);
/// -c COUNT [-W MILLISECONDS] HOST. Nothing for a name, and where this may not ping itself: see becomePing.
std::optional<Task<ToolResult>> runPing(ToolArguments arguments);
/// -c COUNT HOST
std::optional<Task<ToolResult>> runPing6(ToolArguments arguments);

// Those that need the process for themselves write to its outputs and give its exit status.

/// As runPing, by becoming the installed ping. Returns only when there is none.
int becomePing(ToolArguments arguments);
int becomePing6(ToolArguments arguments);
/// --nc list. May end the process.
int runScutil(ToolArguments arguments);

/// What the command line's tool gives, on a loop; nothing when it needs a process of its own, see runProgram. The tool
/// is the one that the first argument's file name says.
std::optional<Task<ToolResult>> answer(std::span<const std::string_view> commandLine);

/// Runs the tool that the program's own name says, else the one that its first argument names.
int runProgram(std::span<const std::string_view> commandLine);

/// Runs tools for who started this program, as toolMessage has it, until that closes the socket.
int serveTools();

} // namespace tolvo::tools
