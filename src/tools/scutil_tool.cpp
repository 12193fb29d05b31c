#include "tools/tool.h"

#include "tools/link_table.h"
#include "tools/network_manager_services.h"
#include "tools/text_output.h"
#include "tools/vpn_service.h"

#include <signal.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace tolvo::tools {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view header = "Available network connection services in the current set (*=enabled):\n";

/// A desktop's bus answers within a few milliseconds; whoever runs this waits two seconds.
constexpr suseconds_t busDeadlineMicroseconds = 900'000;

/// Ends the program in good order at the deadline, wherever it waits for the bus by then: connecting to one whose
/// queue is full blocks in the kernel, out of reach for any time-out of the bus library.
void endAtDeadline() {
    struct sigaction action{};
    action.sa_handler = [](int) { ::_exit(exitStatus::Success); };
    ::sigaction(SIGALRM, &action, nullptr);
    // An alarm that the parent blocked would never come.
    sigset_t alarm;
    ::sigemptyset(&alarm);
    ::sigaddset(&alarm, SIGALRM);
    ::sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
    const itimerval deadline{{0, 0}, {0, busDeadlineMicroseconds}};
    ::setitimer(ITIMER_REAL, &deadline, nullptr);
}

} // namespace

int runScutil(ToolArguments arguments) {
    if (!std::ranges::equal(arguments, std::array{"--nc"sv, "list"sv}))
        return deliver(usageError("scutil --nc list"));
    const auto links = readLinks();
    if (!links)
        return deliver(systemError("scutil", "reading the interfaces", links.error()));
    // What the kernel knows is out before the bus is asked.
    if (const int status = deliver(succeeded(std::string(header) + listServices(wireGuardServices(*links)))))
        return status;
    endAtDeadline();
    return deliver(succeeded(listServices(networkManagerServices())));
}

} // namespace tolvo::tools
