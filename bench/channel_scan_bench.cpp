#include "ondemand/channel_scan_analysis.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <iterator>
#include <string>

namespace tolvo {
namespace {

/// Networks of a crowded place, each seen by all passes. Every third stands on one of few 2.4 GHz channels; with
/// distinct channels each stands on one of its own, which no radio does, but a broken driver might report.
std::vector<ChannelScanPass> crowdedPlace(std::int64_t networkCount, bool hasDistinctChannels) {
    constexpr std::array bands{WiFiBand::TwoPointFourGigahertz, WiFiBand::FiveGigahertz, WiFiBand::SixGigahertz};
    constexpr std::array channelCounts{13, 165, 233};
    ChannelScanPass pass;
    for (std::int64_t i = 0; i < networkCount; ++i) {
        const auto band = static_cast<std::size_t>(i) % bands.size();
        char bssid[18];
        std::snprintf(bssid, std::size(bssid), "02:00:00:%02x:%02x:%02x", static_cast<unsigned>(i >> 16) & 0xff,
                      static_cast<unsigned>(i >> 8) & 0xff, static_cast<unsigned>(i) & 0xff);
        const auto channel = hasDistinctChannels ? i : 1 + i * 7 % channelCounts[band];
        pass.push_back({"network " + std::to_string(i % 97), bssid, -40 - i % 55, channel, bands[band]});
    }
    return {pass, pass, pass};
}

void analyze(benchmark::State& state, bool hasDistinctChannels) {
    const auto passes = crowdedPlace(state.range(0), hasDistinctChannels);
    for (auto _ : state)
        benchmark::DoNotOptimize(analyzeChannelScan(passes, 3, {6, WiFiBand::TwoPointFourGigahertz}, {}));
    state.SetComplexityN(state.range(0));
}

// Three passes of 2,000 networks are to take less than 5 ms, and the time is to grow with the networks.
BENCHMARK_CAPTURE(analyze, channelsInUse, false)
    ->Arg(2000)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK_CAPTURE(analyze, distinctChannels, true)
    ->Arg(2000)
    ->Arg(5000)
    ->Arg(10000)
    ->Arg(20000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

} // namespace
} // namespace tolvo
