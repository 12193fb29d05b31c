#include "tools/tool.h"

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "tools/text_output.h"

#include <algorithm>
#include <array>

namespace tolvo::tools {

namespace {

using Answer = std::optional<Task<ToolResult>>;

struct NamedTool {
    std::string_view name;
    Answer (*answer)(ToolArguments);
    /// Where there may be no answer.
    int (*program)(ToolArguments) = nullptr;
};

template<ToolResult (*run)(ToolArguments)>
Answer atOnce(ToolArguments arguments) {
    return given(run(arguments));
}

constexpr std::array<NamedTool, 7> namedTools{
    {{"ping", runPing, becomePing},
     {"ping6", runPing6, becomePing6},
     {"dig", [](ToolArguments arguments) { return Answer(runDig(arguments)); }},
     {"netstat", atOnce<runNetstat>},
     {"scutil", [](ToolArguments) { return Answer(); }, runScutil},
     {"ifconfig", atOnce<runIfconfig>},
     {"ipconfig", atOnce<runIpconfig>}}};

const NamedTool* toolCalled(std::string_view path) {
    const auto found = std::ranges::find(namedTools, path.substr(path.rfind('/') + 1), &NamedTool::name);
    return found == namedTools.end() ? nullptr : found;
}

Task<void> deliverThenQuit(Task<ToolResult> task, PollLoop& loop, int& status) {
    status = deliver(co_await std::move(task));
    loop.quit();
}

int runOnLoop(Task<ToolResult> task) {
    PollLoop loop;
    TaskScope scope(loop);
    int status = exitStatus::System;
    scope.start(deliverThenQuit(std::move(task), loop, status));
    loop.run();
    return status;
}

int run(const NamedTool& tool, ToolArguments arguments) {
    auto answer = tool.answer(arguments);
    return answer ? runOnLoop(std::move(*answer)) : tool.program(arguments);
}

} // namespace

Task<ToolResult> given(ToolResult result) {
    co_return result;
}

std::optional<Task<ToolResult>> answer(std::span<const std::string_view> commandLine) {
    const NamedTool* const tool = commandLine.empty() ? nullptr : toolCalled(commandLine[0]);
    return tool == nullptr ? std::nullopt : tool->answer(commandLine.subspan(1));
}

int runProgram(std::span<const std::string_view> commandLine) {
    if (!commandLine.empty()) {
        if (const NamedTool* tool = toolCalled(commandLine[0]))
            return run(*tool, commandLine.subspan(1));
    }
    if (commandLine.size() == 2 && commandLine[1] == "serve")
        return serveTools();
    if (commandLine.size() > 1) {
        if (const NamedTool* tool = toolCalled(commandLine[1]))
            return run(*tool, commandLine.subspan(2));
    }
    return deliver(usageError("tolvo-tools ping|ping6|dig|netstat|scutil|ifconfig|ipconfig [ARGUMENT...]"));
}

} // namespace tolvo::tools
