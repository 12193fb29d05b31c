// One command run, launch to outcome, beside a bare posix_spawn and waitpid of the same child that alternates with it,
// so that whatever else the machine does meets both. `ratio` is to stay below 1.3, also in a large process.

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "platform/linux/posix_process_service.h"
#include "probes/shell_command_runner.h"

#include <benchmark/benchmark.h>

#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <vector>

namespace tolvo {
namespace {

const std::string child = TOLVO_CHILD_PROGRAM;

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return Seconds(std::chrono::steady_clock::now() - start).count();
}

void spawnBare() {
    std::string program = child;
    char* const arguments[] = {program.data(), nullptr};
    pid_t pid = -1;
    posix_spawn(&pid, child.c_str(), nullptr, nullptr, arguments, environ);
    waitpid(pid, nullptr, 0);
}

Task<void> runOnce(PollLoop& loop, CommandRunning& runner, bool& didSucceed) {
    didSucceed = (co_await runner.run({child, {}, 10})).has_value();
    loop.quit();
}

void commandRun(benchmark::State& state) {
    const std::vector<char> resident(static_cast<std::size_t>(state.range(0)) << 20, 'x');
    benchmark::DoNotOptimize(resident.data());
    PollLoop loop;
    PosixProcessService service(loop);
    ShellCommandRunner runner(service, {child});
    TaskScope scope(loop);
    std::vector<double> bare, run;
    for ([[maybe_unused]] auto _ : state) {
        bool didSucceed = false;
        bare.push_back(secondsOf(spawnBare));
        run.push_back(secondsOf([&] {
            scope.start(runOnce(loop, runner, didSucceed));
            loop.run();
        }));
        state.SetIterationTime(run.back());
        if (!didSucceed)
            return state.SkipWithError("the child failed");
    }
    state.counters["bare_us"] = median(bare) * 1e6;
    state.counters["run_us"] = median(run) * 1e6;
    state.counters["ratio"] = median(run) / median(bare);
}

BENCHMARK(commandRun)
    ->Name("command run against bare spawn, parent of MiB:")
    ->Arg(0)
    ->Arg(1024)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace tolvo
