#pragma once

#include "presentation/dashboard/dashboard_sources.h"

namespace tolvo::testing {

/// The published values behind a dashboard, to be set at will.
struct DashboardValues {
    Published<bool> isMonitoringEnabled{true};
    Published<HealthState> healthState{HealthState::Good};
    Published<bool> isConnected{true};
    Published<std::optional<WiFiSnapshot>> latestSnapshot;
    Published<std::vector<WiFiSnapshot>> wifiHistory;
    Published<std::optional<std::string>> routerIPAddress;
    Published<std::optional<PingResult>> routerResult;
    Published<std::optional<PingResult>> internetResult;
    Published<std::vector<PingResult>> routerHistory;
    Published<std::vector<PingResult>> internetHistory;
    Published<bool> isRouterIgnored{false};
    Published<std::optional<DNSResult>> dnsResult;
    Published<std::vector<DNSResult>> dnsHistory;
    Published<std::optional<ConnectionPressureResult>> connectionResult;
    Published<SignalQuality> connectionQuality{SignalQuality::Poor};
    Published<std::optional<std::string>> connectionErrorMessage;
    Published<std::optional<CaptivePortalStatus>> captivePortalStatus;
    Published<std::optional<std::string>> captivePortalErrorMessage;

    DashboardSources sources() {
        return {isMonitoringEnabled,
                [] { return std::string("Monitoring active in background mode."); },
                healthState,
                isConnected,
                latestSnapshot,
                wifiHistory,
                routerIPAddress,
                routerResult,
                internetResult,
                routerHistory,
                internetHistory,
                isRouterIgnored,
                dnsResult,
                dnsHistory,
                connectionResult,
                connectionQuality,
                connectionErrorMessage,
                captivePortalStatus,
                captivePortalErrorMessage};
    }
};

inline WiFiSnapshot exampleWiFiSnapshot() {
    WiFiSnapshot snapshot;
    snapshot.interfaceName = "wlan0";
    snapshot.ssid = "Home";
    snapshot.bssid = "02:00:00:00:01:00";
    snapshot.rssiDbm = -52;
    snapshot.noiseFloorDbm = -92;
    snapshot.snrDb = 40;
    snapshot.linkRateMbps = 866;
    snapshot.channelNumber = 36;
    snapshot.band = WiFiBand::FiveGigahertz;
    return snapshot;
}

} // namespace tolvo::testing
