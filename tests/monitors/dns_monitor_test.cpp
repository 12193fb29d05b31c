#include "core/task_sleeper.h"
#include "monitors/dns_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_monitor_probes.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

TEST(DNSMonitor, RotatesWhateverTheOutcomeAndGradesTheLatestLookUpOnly) {
    using enum SignalQuality;
    const std::vector<std::pair<std::optional<double>, SignalQuality>> lookUps{
        {0.0, Good}, {49.9, Good}, {50.0, Warning}, {std::nullopt, Poor}, {100.0, Warning}, {100.5, Poor}};
    const std::vector<std::pair<std::vector<std::string>, std::vector<std::string>>> rotations{
        {{" a\n", "", "b", "a"}, {"a", "b", "a"}}, {{"one"}, {"one"}}, {{" ", "\n"}, DNSMonitor::defaultTestDomains()}};
    for (const auto& [domains, rotation] : rotations) {
        ManualLoop loop;
        TaskSleeper sleeper;
        ScriptedDNSLookupRunner runner;
        WallTime now;
        DNSMonitor monitor(loop, {.pollInterval = 2, .testDomains = domains}, runner, sleeper, [&] { return now; });
        monitor.startMonitoring();
        for (std::size_t i = 0; i < lookUps.size(); ++i) {
            const auto& [answer, quality] = lookUps[i];
            runner.answer = answer;
            now += std::chrono::seconds(2);
            loop.advance(i == 0 ? 0 : 2);
            const DNSResult expected{rotation[i % rotation.size()], now, answer, answer.has_value()};
            EXPECT_EQ(monitor.latestResult.value(), expected) << i;
            EXPECT_EQ(monitor.history.value().back(), expected);
            EXPECT_EQ(monitor.dnsQuality.value(), quality) << i;
        }
        EXPECT_EQ(monitor.history.value().size(), lookUps.size());
        monitor.resetTransientState();
        EXPECT_TRUE(!monitor.latestResult.value() && monitor.history.value().empty());
        EXPECT_EQ(monitor.dnsQuality.value(), Poor);
        loop.advance(2);
        EXPECT_EQ(runner.asked.back(), rotation.front());
    }
}

} // namespace
} // namespace tolvo::testing
