#include "core/monitoring_lifecycle_controller.h"
#include "core/task_sleeper.h"
#include "monitors/connection_monitor.h"
#include "monitors/dns_monitor.h"
#include "tests/support/manual_loop.h"
#include "tests/support/scripted_monitor_probes.h"

#include <gtest/gtest.h>
#include <malloc.h>

namespace tolvo::testing {
namespace {

TEST(Endurance, ADayOfPollsChangesAndSleepsEndsAsItsFirstMinuteDid) {
    ManualLoop loop;
    TaskSleeper sleeper;
    InMemoryAppSettingsStore settings;
    NoOpNetworkChangeObserver network;
    NoOpSleepWakeObserver power;
    ScriptedDNSLookupRunner lookUps;
    ScriptedTCPConnectionCounter counter;
    counter.answer = TCPConnectionStateCounts{10, 1, 1};
    DNSMonitor dns(loop, {}, lookUps, sleeper, [] { return WallTime(); });
    ConnectionMonitor connections(loop, {}, counter, sleeper, [] { return WallTime(); });
    MonitoringLifecycleController lifecycle(loop, {}, {dns, connections}, network, power, sleeper, settings, nullptr);
    const auto historiesAre = [&](std::size_t size) {
        return dns.history.value().size() == size && connections.history.value().size() == size;
    };
    settings.setBatteryFriendly(false);
    lifecycle.start();
    loop.advance(58 * 0.5 + 0.1);
    EXPECT_TRUE(historiesAre(59));
    loop.advance(30);
    const std::size_t timers = loop.timerCount();
    std::size_t usedBytes = 0;
    for (int hour = 0; hour < 24; ++hour) {
        lookUps.asked = {};
        usedBytes = hour == 0 ? mallinfo2().uordblks : usedBytes;
        lifecycle.setBatteryFriendly(hour >= 3);
        loop.advance(3000);
        // One more after a wake, whose first poll comes at once.
        EXPECT_EQ(lookUps.asked.size(), (hour < 3 ? 6000U : 750U) + (hour > 0 ? 1 : 0));
        EXPECT_TRUE(historiesAre(60));
        network.onNetworkChange();
        EXPECT_TRUE(historiesAre(0));
        loop.advance(599);
        EXPECT_TRUE(historiesAre(60));
        power.onWillSleep();
        loop.advance(1);
        EXPECT_EQ(loop.timerCount(), 0U);
        power.onDidWake();
    }
    loop.advance(300);
    lookUps.asked = {};
    EXPECT_TRUE(historiesAre(60));
    EXPECT_EQ(loop.timerCount(), timers);
    EXPECT_LT(mallinfo2().uordblks, usedBytes + 4096);
}

} // namespace
} // namespace tolvo::testing
