#include "probes/command_line_tcp_connection_counter.h"

#include "probes/command_output.h"
#include "probes/tcp_state_parser.h"

namespace tolvo {

CommandLineTCPConnectionCounter::CommandLineTCPConnectionCounter(CommandRunning& commandRunner)
    : commandRunner_(commandRunner) {}

Task<std::optional<TCPConnectionStateCounts>> CommandLineTCPConnectionCounter::connectionCounts(double timeout) {
    const CommandOutcome outcome =
        co_await commandRunner_.run(CommandRequest{"/usr/sbin/netstat", {"-n", "-p", "tcp"}, timeout});
    const auto output = outputOfAnyExit(outcome);
    co_return output ? std::optional(parseTCPConnectionStates(*output)) : std::nullopt;
}

} // namespace tolvo
