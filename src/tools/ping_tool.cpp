#include "tools/tool.h"

#include "tools/echo_run.h"
#include "tools/text_output.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace tolvo::tools {

namespace {

struct PingRequest {
    std::string count;
    std::optional<std::int64_t> waitMilliseconds;
    std::string host;
};

/// The installed ping refuses longer waits.
constexpr std::int64_t longestWaitMilliseconds = 2'000'000;

std::optional<PingRequest> parseRequest(ToolArguments arguments) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    PingRequest request;
    for (; arguments.size() > 2; arguments = arguments.subspan(2)) {
        const std::string_view option = arguments[0];
        if (option == "-c" && parseNumber(arguments[1], 1, most))
            request.count = arguments[1];
        else if (option == "-W" && parseNumber(arguments[1], 1, most))
            request.waitMilliseconds = std::min(*parseNumber(arguments[1], 1, most), longestWaitMilliseconds);
        else
            return std::nullopt;
    }
    if (arguments.size() != 1 || arguments[0].empty() || request.count.empty())
        return std::nullopt;
    request.host = arguments[0];
    return request;
}

std::string secondsText(std::int64_t milliseconds) {
    const std::string fraction = std::to_string(1000 + milliseconds % 1000);
    return std::to_string(milliseconds / 1000) + '.' + fraction.substr(1);
}

/// Whether the path leads back to this program, which may stand in the place of a ping.
bool isThisProgram(const char* path) {
    struct stat self{};
    struct stat candidate{};
    return ::stat("/proc/self/exe", &self) == 0 && ::stat(path, &candidate) == 0 && self.st_dev == candidate.st_dev &&
           self.st_ino == candidate.st_ino;
}

/// What the installed ping waits for a reply when it isn't told.
constexpr std::int64_t defaultWaitMilliseconds = 10'000;

Task<ToolResult> ping(EchoSocket socket, std::uint16_t count, std::chrono::milliseconds wait, std::string host) {
    EchoRun run(socket, count, wait);
    co_await run.run();
    co_return ToolResult{run.hasReplies() ? exitStatus::Success : exitStatus::NothingFound, run.report(host), {}};
}

/// Pings the address without another program, whose start costs several times as much as the pings do. Family:
/// AF_INET6, or AF_UNSPEC for whichever fits.
std::optional<Task<ToolResult>> pingAddress(const PingRequest& request, int family) {
    const auto target = EchoTarget::parse(request.host);
    const auto count = parseNumber(request.count, 1, std::numeric_limits<std::uint16_t>::max());
    if (!target || !count || (family != AF_UNSPEC && target->family() != family))
        return std::nullopt;
    auto socket = EchoSocket::connectTo(*target);
    if (!socket)
        return std::nullopt;
    return ping(std::move(*socket), static_cast<std::uint16_t>(*count),
                std::chrono::milliseconds(request.waitMilliseconds.value_or(defaultWaitMilliseconds)), request.host);
}

/// For the installed ping.
std::vector<std::string> commandLineFor(const PingRequest& request, int family) {
    // -n: names of repliers are never asked for. "--": a host is no option, whatever it begins with.
    std::vector<std::string> commandLine{"ping", "-n", "-c", request.count};
    if (family == AF_INET6)
        commandLine.emplace_back("-6");
    if (request.waitMilliseconds) {
        commandLine.emplace_back("-W");
        commandLine.push_back(secondsText(*request.waitMilliseconds));
    }
    commandLine.emplace_back("--");
    commandLine.push_back(request.host);
    return commandLine;
}

/// Returns only when no ping could be started.
int become(std::vector<std::string> commandLine) {
    static constexpr std::array places{"/usr/bin/ping", "/bin/ping", "/usr/sbin/ping", "/sbin/ping",
                                       "/run/wrappers/bin/ping"};
    std::vector<char*> arguments;
    arguments.reserve(commandLine.size() + 1);
    for (std::string& argument : commandLine)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    // Its lines are parsed, so they must be the same in every language.
    ::setenv("LC_ALL", "C", 1);
    int error = ENOENT;
    for (const char* place : places) {
        if (isThisProgram(place))
            continue;
        ::execv(place, arguments.data());
        if (errno != ENOENT)
            error = errno;
    }
    return deliver(
        failed(std::string("ping: starting the installed ping: ") + std::strerror(error), exitStatus::Unavailable));
}

/// A request of ping6, which has no -W.
std::optional<PingRequest> parseRequest6(ToolArguments arguments) {
    auto request = parseRequest(arguments);
    return request && !request->waitMilliseconds ? request : std::nullopt;
}

} // namespace

std::optional<Task<ToolResult>> runPing(ToolArguments arguments) {
    const auto request = parseRequest(arguments);
    if (!request)
        return given(usageError("ping -c COUNT [-W MILLISECONDS] HOST"));
    // A name may have addresses of either family; the system knows best which of them can be reached.
    return pingAddress(*request, AF_UNSPEC);
}

std::optional<Task<ToolResult>> runPing6(ToolArguments arguments) {
    const auto request = parseRequest6(arguments);
    return request ? pingAddress(*request, AF_INET6) : given(usageError("ping6 -c COUNT HOST"));
}

int becomePing(ToolArguments arguments) {
    return become(commandLineFor(parseRequest(arguments).value(), AF_UNSPEC));
}

int becomePing6(ToolArguments arguments) {
    return become(commandLineFor(parseRequest6(arguments).value(), AF_INET6));
}

} // namespace tolvo::tools
