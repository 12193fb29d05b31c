#include "platform/re2/re2_regular_expression.h"
#include "probes/ping_summary_parser.h"
#include "probes/tcp_state_parser.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace tolvo;

std::string tableOf(int rows) {
    const std::string states[] = {"ESTABLISHED", "TIME_WAIT", "CLOSE_WAIT", "LISTEN", "FIN_WAIT_2"};
    std::string table = "Active Internet connections\nProto Recv-Q Send-Q  Local Address  Foreign Address  (state)\n";
    for (int row = 0; row < rows; ++row) {
        char line[128];
        std::snprintf(line, sizeof line, "tcp4       0      0  192.168.%d.%d.%-8d 203.0.113.%d.443       %s\n",
                      row / 250 % 250, row % 250, 1024 + row, row % 250, states[row % 5].c_str());
        table += line;
    }
    return table;
}

/// The peer: what a parser costs that takes a stream apart word by word.
TCPConnectionStateCounts countWithStreams(const std::string& table) {
    std::map<std::string, std::int64_t> counts;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::vector<std::string> columns;
        for (std::string word; words >> word;)
            columns.push_back(word);
        if (!columns.empty() && columns.front().starts_with("tcp"))
            ++counts[columns.back()];
    }
    return {counts["ESTABLISHED"], counts["TIME_WAIT"], counts["CLOSE_WAIT"]};
}

/// The bound: finding the ends of the lines, which any parser has to do.
std::int64_t countLines(const std::string& table) {
    std::int64_t lines = 0;
    for (auto end = table.find('\n'); end != std::string::npos; end = table.find('\n', end + 1))
        ++lines;
    return lines;
}

template<auto parse>
void tcpTable(benchmark::State& state) {
    const std::string table = tableOf(static_cast<int>(state.range(0)));
    if (parseTCPConnectionStates(table) != countWithStreams(table))
        std::abort();
    for (auto _ : state)
        benchmark::DoNotOptimize(parse(table));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(table.size()));
}
BENCHMARK(tcpTable<parseTCPConnectionStates>)->Name("TCP table, ours")->Arg(20'000);
BENCHMARK(tcpTable<countWithStreams>)->Name("TCP table, with streams")->Arg(20'000);
BENCHMARK(tcpTable<countLines>)->Name("TCP table, its lines alone")->Arg(20'000);

const std::string pingOutput = "PING 1.1.1.1 (1.1.1.1) 56(84) bytes of data.\n"
                               "64 bytes from 1.1.1.1: icmp_seq=1 ttl=57 time=9.52 ms\n"
                               "64 bytes from 1.1.1.1: icmp_seq=2 ttl=57 time=9.61 ms\n\n"
                               "--- 1.1.1.1 ping statistics ---\n"
                               "2 packets transmitted, 2 received, 0% packet loss, time 1001ms\n"
                               "rtt min/avg/max/mdev = 9.521/9.565/9.610/0.044 ms\n";

void ping(benchmark::State& state) {
    const Re2RegularExpressionCompiler compiler;
    const PingSummaryParser parser(compiler);
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.measurement(pingOutput));
}
BENCHMARK(ping)->Name("ping summary, ours");

/// The peer: the C library's scanner on the two lines, found by plain search.
void pingWithScanf(benchmark::State& state) {
    for (auto _ : state) {
        double loss = 0, min = 0, avg = 0, max = 0, mdev = 0;
        std::sscanf(std::strstr(pingOutput.c_str(), "received, ") + 10, "%lf%% packet loss", &loss);
        std::sscanf(std::strstr(pingOutput.c_str(), "rtt "), "rtt min/avg/max/mdev = %lf/%lf/%lf/%lf ms", &min, &avg,
                    &max, &mdev);
        benchmark::DoNotOptimize(loss + avg + mdev);
    }
}
BENCHMARK(pingWithScanf)->Name("ping summary, with scanf");

} // namespace
