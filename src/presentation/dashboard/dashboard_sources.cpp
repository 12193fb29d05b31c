#include "presentation/dashboard/dashboard_sources.h"

namespace tolvo {

std::vector<Subscription> subscribeToAll(const DashboardSources& sources, const std::function<void()>& onChange) {
    return subscribeToEach(onChange, sources.isMonitoringEnabled, sources.healthState, sources.isConnected,
                           sources.latestSnapshot, sources.wifiHistory, sources.routerIPAddress, sources.routerResult,
                           sources.internetResult, sources.routerHistory, sources.internetHistory,
                           sources.isRouterIgnored, sources.dnsResult, sources.dnsHistory, sources.connectionResult,
                           sources.connectionQuality, sources.connectionErrorMessage, sources.captivePortalStatus,
                           sources.captivePortalErrorMessage);
}

} // namespace tolvo
