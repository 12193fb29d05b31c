#include "monitors/health_grading.h"

#include "core/model/grading.h"

#include <algorithm>
#include <array>

namespace tolvo {

namespace {

using Grade = std::optional<SignalQuality>;

SignalQuality signalGrade(std::int64_t rssiDbm) {
    if (rssiDbm > -60)
        return SignalQuality::Good;
    return rssiDbm >= -75 ? SignalQuality::Warning : SignalQuality::Poor;
}

SignalQuality noiseGrade(std::int64_t noiseFloorDbm) {
    if (noiseFloorDbm < -90)
        return SignalQuality::Good;
    return noiseFloorDbm <= -80 ? SignalQuality::Warning : SignalQuality::Poor;
}

Grade ratioGrade(std::optional<std::int64_t> snrDb) {
    if (!snrDb)
        return std::nullopt;
    if (*snrDb >= 25)
        return SignalQuality::Good;
    return *snrDb >= 20 ? SignalQuality::Warning : SignalQuality::Poor;
}

} // namespace

HealthState overallHealth(const HealthReadings& readings) {
    if (!readings.isMonitoringEnabled || !readings.isConnected || !readings.wifiSnapshot)
        return HealthState::Disconnected;
    const auto router = readings.isRouterIgnored ? std::nullopt : readings.routerPingResult;
    const std::array<Grade, 8> grades{
        signalGrade(readings.wifiSnapshot->rssiDbm),
        noiseGrade(readings.wifiSnapshot->noiseFloorDbm),
        ratioGrade(readings.wifiSnapshot->snrDb),
        latencyQuality(readings.internetPingResult),
        jitterQuality(readings.internetPingResult),
        latencyQuality(readings.dnsResult),
        latencyQuality(router),
        jitterQuality(router),
    };
    const auto anyIs = [&](SignalQuality grade) { return std::ranges::find(grades, Grade(grade)) != grades.end(); };
    if (anyIs(SignalQuality::Poor))
        return HealthState::Poor;
    return anyIs(SignalQuality::Warning) ? HealthState::Warning : HealthState::Good;
}

} // namespace tolvo
