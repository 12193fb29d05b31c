#pragma once

#include "probes/dns_lookup_running.h"
#include "probes/tcp_connection_counting.h"

#include <vector>

namespace tolvo::testing {

struct ScriptedDNSLookupRunner final : DNSLookupRunning {
    Task<std::optional<double>> queryTime(std::string domain, double) override {
        asked.push_back(std::move(domain));
        co_return answer;
    }
    std::optional<double> answer;
    std::vector<std::string> asked;
};

struct ScriptedTCPConnectionCounter final : TCPConnectionCounting {
    Task<std::optional<TCPConnectionStateCounts>> connectionCounts(double) override { co_return answer; }
    std::optional<TCPConnectionStateCounts> answer;
};

} // namespace tolvo::testing
