#pragma once

#include "core/async/published.h"
#include "core/model/captive_portal_status.h"
#include "core/model/connection_pressure_result.h"
#include "core/model/dns_result.h"
#include "core/model/health_state.h"
#include "core/model/ping_result.h"
#include "core/model/wifi_snapshot.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// The published values that the dashboard shows. What they belong to outlives whoever reads them here.
struct DashboardSources {
    Published<bool>& isMonitoringEnabled;
    /// The lifecycle's sentence on what the monitors are doing.
    std::function<std::string()> statusMessage;
    Published<HealthState>& healthState;

    Published<bool>& isConnected;
    Published<std::optional<WiFiSnapshot>>& latestSnapshot;
    Published<std::vector<WiFiSnapshot>>& wifiHistory;

    Published<std::optional<std::string>>& routerIPAddress;
    Published<std::optional<PingResult>>& routerResult;
    Published<std::optional<PingResult>>& internetResult;
    Published<std::vector<PingResult>>& routerHistory;
    Published<std::vector<PingResult>>& internetHistory;
    Published<bool>& isRouterIgnored;

    Published<std::optional<DNSResult>>& dnsResult;
    Published<std::vector<DNSResult>>& dnsHistory;

    Published<std::optional<ConnectionPressureResult>>& connectionResult;
    Published<SignalQuality>& connectionQuality;
    Published<std::optional<std::string>>& connectionErrorMessage;

    Published<std::optional<CaptivePortalStatus>>& captivePortalStatus;
    Published<std::optional<std::string>>& captivePortalErrorMessage;
};

/// Calls back on any new value of any source, just before it is stored.
std::vector<Subscription> subscribeToAll(const DashboardSources& sources, const std::function<void()>& onChange);

} // namespace tolvo
