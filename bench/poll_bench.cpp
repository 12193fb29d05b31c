// What a poll costs the main thread when its tools cost nothing: command lines, loop, parsing, values, histories. The
// peer reads the same outputs with the C library's scanner and does nothing else. A poll is to stay below 50 us.

#include "core/task_sleeper.h"
#include "monitors/connection_monitor.h"
#include "monitors/dns_monitor.h"
#include "monitors/ping_monitor.h"
#include "platform/linux/inet_address_parser.h"
#include "platform/linux/poll_loop.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/command_line_dns_lookup_runner.h"
#include "probes/command_line_ping_probe_runner.h"
#include "probes/command_line_tcp_connection_counter.h"
#include "probes/shell_command_runner.h"
#include "probes/tool_table.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <map>

namespace tolvo {
namespace {

const std::string pingOutput = "PING 203.0.113.10 (203.0.113.10) 56(84) bytes of data.\n"
                               "64 bytes from 203.0.113.10: icmp_seq=1 ttl=63 time=9.52 ms\n"
                               "64 bytes from 203.0.113.10: icmp_seq=2 ttl=63 time=9.61 ms\n\n"
                               "--- 203.0.113.10 ping statistics ---\n"
                               "2 packets transmitted, 2 received, 0% packet loss, time 1001ms\n"
                               "rtt min/avg/max/mdev = 9.521/9.565/9.610/0.044 ms\n";
const std::string digOutput = ";; Got answer:\n;; ->>HEADER<<- opcode: QUERY, status: NOERROR, id: 4711\n"
                              ";; ANSWER SECTION:\napple.com. 300 IN A 203.0.113.10\n\n;; Query time: 23 msec\n"
                              ";; SERVER: 203.0.113.53#53(203.0.113.53) (UDP)\n";

std::string socketTable(int rows) {
    std::string table = "Proto Recv-Q Send-Q Local Address Foreign Address (state)\n";
    for (int row = 0; row < rows; ++row)
        table += "tcp4 0 0 192.0.2.10." + std::to_string(40000 + row) + " 203.0.113.10.443 ESTABLISHED\n";
    return table;
}

class EndedProcess final : public RunningProcess {
public:
    EndedProcess() = default;
    bool isRunning() const override { return false; }
    void terminate() override {}
};

/// Programs that have printed their text and ended at once.
class InstantProcesses final : public ProcessService {
public:
    explicit InstantProcesses(MainLoop& loop) : loop_(loop) {}

    std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
    launch(const std::string& executable, const std::vector<std::string>&, TerminationHandler onTermination) override {
        loop_.post([this, executable, handler = std::move(onTermination)]() mutable {
            handler({0, outputs_.at(executable), ""});
        });
        return std::make_unique<EndedProcess>();
    }

private:
    MainLoop& loop_;
    const std::map<std::string, std::string> outputs_{{"/usr/sbin/ipconfig", "192.0.2.1\n"},
                                                      {"/sbin/ping", pingOutput},
                                                      {"/usr/bin/dig", digOutput},
                                                      {"/usr/sbin/netstat", socketTable(40)}};
};

struct Probes {
    PollLoop loop;
    InstantProcesses processes{loop};
    ShellCommandRunner runner{processes, allowedToolPaths()};
    Re2RegularExpressionCompiler compiler;
    InetAddressParser addressParser;
    CommandLinePingProbeRunner ping{
        runner, compiler, addressParser, {}, [] { return std::optional<std::string>("en0"); }};
    CommandLineDNSLookupRunner dns{runner, compiler};
    CommandLineTCPConnectionCounter connections{runner};
    TaskSleeper sleeper;
    DateProvider now = [] { return std::chrono::system_clock::now(); };
};

/// Polls without a pause, one an iteration.
template<class Monitor, class History>
void pollWithoutPause(benchmark::State& state, PollLoop& loop, Monitor& monitor, History& history) {
    const Subscription ending = history.subscribe([&](const auto&) { loop.quit(); });
    monitor.updatePollInterval(0);
    monitor.startMonitoring();
    for ([[maybe_unused]] auto _ : state)
        loop.run();
}

void pingPoll(benchmark::State& state) {
    Probes probes;
    PingMonitor monitor(probes.loop, {}, probes.ping, probes.sleeper, probes.now);
    pollWithoutPause(state, probes.loop, monitor, monitor.internetHistory);
}
BENCHMARK(pingPoll)->Name("poll/router and internet ping")->Unit(benchmark::kMicrosecond);

void dnsPoll(benchmark::State& state) {
    Probes probes;
    DNSMonitor monitor(probes.loop, {.testDomains = DNSMonitor::defaultTestDomains()}, probes.dns, probes.sleeper,
                       probes.now);
    pollWithoutPause(state, probes.loop, monitor, monitor.history);
}
BENCHMARK(dnsPoll)->Name("poll/look-up")->Unit(benchmark::kMicrosecond);

void connectionPoll(benchmark::State& state) {
    Probes probes;
    ConnectionMonitor monitor(probes.loop, {}, probes.connections, probes.sleeper, probes.now);
    pollWithoutPause(state, probes.loop, monitor, monitor.history);
}
BENCHMARK(connectionPoll)->Name("poll/40 sockets")->Unit(benchmark::kMicrosecond);

void scanTwoPings(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < 2; ++i) {
            double loss = 0, min = 0, avg = 0, max = 0, mdev = 0;
            std::sscanf(std::strstr(pingOutput.c_str(), "received, ") + 10, "%lf%% packet loss", &loss);
            std::sscanf(std::strstr(pingOutput.c_str(), "rtt "), "rtt min/avg/max/mdev = %lf/%lf/%lf/%lf ms", &min,
                        &avg, &max, &mdev);
            benchmark::DoNotOptimize(loss + avg + mdev);
        }
    }
}
BENCHMARK(scanTwoPings)->Name("peer/two summaries with scanf")->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tolvo
