#pragma once

#include "probes/command_running.h"
#include "probes/dig_query_time_parser.h"
#include "probes/dns_lookup_running.h"

#include <optional>
#include <string>

namespace tolvo {

/// Times a look-up with dig, in a single try.
class CommandLineDNSLookupRunner final : public DNSLookupRunning {
public:
    CommandLineDNSLookupRunner(CommandRunning& commandRunner, const RegularExpressionCompiling& compiler);

    Task<std::optional<double>> queryTime(std::string domain, double timeout) override;

private:
    CommandRunning& commandRunner_;
    DigQueryTimeParser parser_;
};

} // namespace tolvo
