// The tools beside their peers, in processor time of the child (user and kernel), which is what a poll several times a
// second costs. Needs root for a network of its own.

#include "platform/linux/unique_descriptor.h"
#include "tests/tools/name_server.h"
#include "tests/tools/sandbox.h"

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <cstdio>
#include <vector>

namespace {

using namespace tolvo;
using CommandLine = std::vector<std::string>;

/// An iteration's time is the child's processor time.
void runChildren(benchmark::State& state, const CommandLine& commandLine) {
    double wall = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const test::ToolRun result = test::run(commandLine, test::Output::Discarded);
        if (result.status != 0) {
            state.SkipWithError(("status " + std::to_string(result.status) + ": " + result.errors).c_str());
            return;
        }
        state.SetIterationTime(result.cpuMilliseconds / 1e3);
        wall += result.wallMilliseconds;
    }
    state.counters["wall_ms"] = benchmark::Counter(wall, benchmark::Counter::kAvgIterations);
}

/// Half of the sockets are the clients, the other half the server's.
class Connections {
public:
    void grow(std::int64_t count) {
        if (!listener_) {
            rlimit limit{40000, 40000};
            ::setrlimit(RLIMIT_NOFILE, &limit);
            listener_ = UniqueDescriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
            ::listen(listener_.get(), 1024);
        }
        sockaddr_in address{};
        socklen_t size = sizeof address;
        ::getsockname(listener_.get(), reinterpret_cast<sockaddr*>(&address), &size);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        while (std::cmp_less(sockets_.size(), count)) {
            sockets_.emplace_back(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
            if (::connect(sockets_.back().get(), reinterpret_cast<sockaddr*>(&address), size) != 0)
                return;
            sockets_.emplace_back(::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC));
        }
    }

private:
    UniqueDescriptor listener_;
    std::vector<UniqueDescriptor> sockets_;
};

void bench(const std::string& name, const CommandLine& commandLine, int iterations) {
    benchmark::RegisterBenchmark(name.c_str(), runChildren, commandLine)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(iterations);
}

/// Ours and its peers, beside this many sockets.
void benchSockets(Connections& connections, std::int64_t count, int iterations) {
    const std::vector<std::pair<std::string, CommandLine>> programs{
        {"ours", {test::toolPath("netstat"), "-n", "-p", "tcp"}},
        {"ss", {"ss", "-tan"}},
        {"netstat", {"/usr/bin/netstat", "-ant"}}};
    for (const auto& [name, commandLine] : programs) {
        const std::string fullName = "sockets/" + name + "/" + std::to_string(count);
        benchmark::RegisterBenchmark(fullName.c_str(),
                                     [&connections, count, commandLine](benchmark::State& state) {
                                         connections.grow(count);
                                         runChildren(state, commandLine);
                                     })
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond)
            ->Iterations(iterations);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (const auto problem = test::enterSandbox()) {
        std::puts(problem->c_str());
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    test::setResolverConfiguration("nameserver 127.0.0.1\n");
    const test::NameServer server(
        [](const test::Packet& query) { return std::vector<test::Packet>{test::answerTo(query)}; });
    Connections connections;
    bench("start/nothing", {TOLVO_BENCH_FOLDER "/tolvo_nothing"}, 500);
    bench("start/ours", {test::toolPath("ipconfig"), "getifaddr", "lo"}, 500);
    bench("dig/ours", {test::toolPath("dig"), "+time=1", "+tries=1", "example.test"}, 300);
    bench("dig/installed", {"dig", "+time=1", "+tries=1", "example.test"}, 50);
    bench("interfaces/ours", {test::toolPath("ifconfig")}, 300);
    bench("routes/ours", {test::toolPath("netstat"), "-rn"}, 300);
    bench("services/ours", {test::toolPath("scutil"), "--nc", "list"}, 300);
    benchSockets(connections, 1000, 100);
    benchSockets(connections, 18000, 20);
    benchmark::RunSpecifiedBenchmarks();
}
