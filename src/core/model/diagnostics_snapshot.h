#pragma once

#include "core/model/dns_result.h"
#include "core/model/health_state.h"
#include "core/model/ping_result.h"
#include "core/model/wall_time.h"
#include "core/model/wifi_snapshot.h"

#include <optional>

namespace tolvo {

/// The combined view of the health aggregation at one moment.
struct DiagnosticsSnapshot {
    WallTime timestamp;
    std::optional<WiFiSnapshot> wifiSnapshot;
    std::optional<PingResult> routerPingResult;
    std::optional<PingResult> internetPingResult;
    std::optional<DNSResult> dnsResult;
    HealthState healthState = HealthState::Disconnected;

    bool operator==(const DiagnosticsSnapshot&) const = default;
};

} // namespace tolvo
