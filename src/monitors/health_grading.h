#pragma once

#include "core/model/dns_result.h"
#include "core/model/health_state.h"
#include "core/model/ping_result.h"
#include "core/model/wifi_snapshot.h"

#include <optional>

namespace tolvo {

/// The latest values of everything that the overall state follows from, at one moment.
struct HealthReadings {
    bool isMonitoringEnabled = false;
    bool isConnected = false;
    std::optional<WiFiSnapshot> wifiSnapshot;
    std::optional<PingResult> routerPingResult;
    std::optional<PingResult> internetPingResult;
    std::optional<DNSResult> dnsResult;
    /// The router doesn't answer pings though the path through it is well, so its pings say nothing.
    bool isRouterIgnored = false;
};

/// The worst grade of signal, noise, signal-to-noise ratio, ping latency and jitter, and look-up time; what has no
/// value yet has no say. Disconnected without monitoring or without a link.
HealthState overallHealth(const HealthReadings& readings);

} // namespace tolvo
