#include "monitors/health_aggregation_controller.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <functional>
#include <string_view>

namespace tolvo::testing {
namespace {

WiFiSnapshot link(std::int64_t rssiDbm, std::int64_t noiseFloorDbm) {
    WiFiSnapshot result;
    result.rssiDbm = rssiDbm;
    result.noiseFloorDbm = noiseFloorDbm;
    return result;
}

PingResult ping(std::optional<double> latency, std::optional<double> jitter) {
    return {PingTarget::Internet, {}, latency, jitter, 0, latency.has_value()};
}

TEST(HealthGrading, WorstSignalDecides) {
    using enum HealthState;
    using Readings = HealthReadings;
    struct Case {
        std::string_view name;
        HealthState expected;
        std::function<void(Readings&)> change;
    };
    const auto lost = ping({}, {});
    const DNSResult slowLookUp{"example.org", {}, 50, true};
    const Case cases[] = {
        {"edge of good", Good, [](Readings&) {}},
        {"monitoring off", Disconnected, [](Readings& r) { r.isMonitoringEnabled = false; }},
        {"signal -60", Warning, [](Readings& r) { r.wifiSnapshot->rssiDbm = -60; }},
        {"signal -75", Warning, [](Readings& r) { r.wifiSnapshot->rssiDbm = -75; }},
        {"signal -76", Poor, [](Readings& r) { r.wifiSnapshot->rssiDbm = -76; }},
        {"noise -90", Warning, [](Readings& r) { r.wifiSnapshot->noiseFloorDbm = -90; }},
        {"noise -80", Warning, [](Readings& r) { r.wifiSnapshot->noiseFloorDbm = -80; }},
        {"noise -79", Poor, [](Readings& r) { r.wifiSnapshot->noiseFloorDbm = -79; }},
        {"ratio 25", Good, [](Readings& r) { r.wifiSnapshot->snrDb = 25; }},
        {"ratio 24", Warning, [](Readings& r) { r.wifiSnapshot->snrDb = 24; }},
        {"ratio 20", Warning, [](Readings& r) { r.wifiSnapshot->snrDb = 20; }},
        {"ratio 19", Poor, [](Readings& r) { r.wifiSnapshot->snrDb = 19; }},
        {"internet jitter 10 ms", Warning, [](Readings& r) { r.internetPingResult = ping(50, 10); }},
        {"look-up 50 ms", Warning, [&](Readings& r) { r.dnsResult = slowLookUp; }},
        {"router lost", Poor, [&](Readings& r) { r.routerPingResult = lost; }},
        {"poor beats warning", Poor, [&](Readings& r) { r.dnsResult = slowLookUp, r.routerPingResult = lost; }},
        {"ignored router lost", Good, [&](Readings& r) { r.routerPingResult = lost, r.isRouterIgnored = true; }},
    };
    for (const auto& [name, expected, change] : cases) {
        Readings readings{true, true, link(-59, -91), {}, {}, {}, false};
        change(readings);
        EXPECT_EQ(overallHealth(readings), expected) << name;
    }
}

TEST(HealthAggregation, EverySourceCausesARebuild) {
    ManualLoop loop;
    Published<bool> isMonitoringEnabled{true}, isConnected{true}, isRouterIgnored;
    Published<std::optional<WiFiSnapshot>> latestSnapshot{link(-50, -95)};
    Published<std::optional<PingResult>> routerResult, internetResult;
    Published<std::optional<DNSResult>> latestDNSResult;
    const HealthSources sources{isMonitoringEnabled, isConnected,     latestSnapshot, routerResult,
                                internetResult,      isRouterIgnored, latestDNSResult};
    int rebuilds = 0;
    HealthAggregationController controller(loop, sources, [&] { return WallTime(std::chrono::seconds(++rebuilds)); });

    internetResult.set(ping({}, {}));
    EXPECT_EQ(controller.healthState.value(), HealthState::Good) << "not before the value is stored";
    loop.runUntilIdle();
    EXPECT_EQ(controller.healthState.value(), HealthState::Poor);

    isConnected.set(true);
    latestSnapshot.set(latestSnapshot.value());
    routerResult.set(std::nullopt);
    isRouterIgnored.set(false);
    latestDNSResult.set(std::nullopt);
    isMonitoringEnabled.set(false);
    loop.runUntilIdle();
    EXPECT_EQ(rebuilds, 8) << "one for each value, equal ones included";
    EXPECT_EQ(controller.latestDiagnosticsSnapshot.value()->internetPingResult, ping({}, {}))
        << "a disconnected snapshot still holds what there is";
    EXPECT_EQ(controller.healthState.value(), HealthState::Disconnected);
}

} // namespace
} // namespace tolvo::testing
