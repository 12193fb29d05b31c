#pragma once

#include "probes/command_running.h"
#include "probes/tcp_connection_counting.h"

#include <optional>

namespace tolvo {

/// Counts TCP sockets in the table that netstat prints.
class CommandLineTCPConnectionCounter final : public TCPConnectionCounting {
public:
    explicit CommandLineTCPConnectionCounter(CommandRunning& commandRunner);

    Task<std::optional<TCPConnectionStateCounts>> connectionCounts(double timeout) override;

private:
    CommandRunning& commandRunner_;
};

} // namespace tolvo
