#include "core/task_sleeper.h"
#include "monitors/connection_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_monitor_probes.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

TEST(ConnectionMonitor, GradesTotalAndOrphanedAndAFailureLeavesTheReading) {
    using enum SignalQuality;
    const std::vector<std::pair<TCPConnectionStateCounts, SignalQuality>> readings{
        {{0, 0, 0}, Good},          {{300, 100, 99}, Good},  {{500, 0, 0}, Warning}, {{0, 100, 100}, Warning},
        {{400, 200, 200}, Warning}, {{401, 200, 200}, Poor}, {{0, 0, 401}, Poor},    {{100, 450, 0}, Poor}};
    ManualLoop loop;
    TaskSleeper sleeper;
    ScriptedTCPConnectionCounter counter;
    ConnectionMonitor monitor(loop, {.pollInterval = 2}, counter, sleeper, [] { return WallTime(); });
    monitor.startMonitoring();
    for (const auto& [counts, quality] : readings) {
        for (const bool isAnswered : {false, true, false}) {
            counter.answer = isAnswered ? std::optional(counts) : std::nullopt;
            loop.advance(2);
            EXPECT_EQ(monitor.lastErrorMessage.value().value_or(""),
                      isAnswered ? "" : "Connection monitor failed to read TCP states.");
        }
        EXPECT_EQ(monitor.connectionQuality.value(), quality) << counts.totalCount() << ' ' << counts.orphanedCount();
        EXPECT_EQ(monitor.latestResult.value(), (ConnectionPressureResult{WallTime(), counts, quality}));
    }
    EXPECT_EQ(monitor.history.value().size(), readings.size());
    monitor.resetTransientState();
    EXPECT_TRUE(!monitor.lastErrorMessage.value() && !monitor.latestResult.value() && monitor.history.value().empty());
    EXPECT_EQ(monitor.connectionQuality.value(), Poor);
}

} // namespace
} // namespace tolvo::testing
