#include "app/monitoring.h"

#include "probes/tool_table.h"

namespace tolvo {

namespace {

/// The Wi-Fi's router is preferred over any other.
CommandLinePingProbeRunner::InterfaceNameProvider wifiInterfaceName(WiFiClient& client) {
    return [&client]() -> std::optional<std::string> {
        const auto link = client.currentLink();
        return link ? link->interfaceName : std::nullopt;
    };
}

} // namespace

Monitoring::Monitoring(SystemServices& system, NetworkChangeObserving& networkChangeObserver,
                       SleepWakeObserving& sleepWakeObserver, AppSettingsStoring& settingsStore)
    : pingRunner_(system.processService, allowedToolPaths()),
      dnsRunner_(system.processService, allowedToolPaths()),
      connectionRunner_(system.processService, allowedToolPaths()),
      metadataRunner_(system.processService, allowedToolPaths()),
      pingProbeRunner_(pingRunner_, system.regularExpressions, system.addressParser,
                       {.pingPacketCount = 2, .commandTimeoutGracePeriod = 0.5}, wifiInterfaceName(*system.wifiClient)),
      dnsLookupRunner_(dnsRunner_, system.regularExpressions),
      connectionCounter_(connectionRunner_),
      metadataResolver_(metadataRunner_, system.regularExpressions, system.addressParser, 2.0),
      probeFetcher_(system.urlSession),
      captivePortalChecker_(probeFetcher_),
      interfaceProvider(*system.wifiClient),
      networkScanner(*system.wifiClient),
      wifiMonitor(system.loop, {.pollInterval = 2.0, .maxHistorySampleCount = 60, .metadataRefreshInterval = 10.0},
                  interfaceProvider, metadataResolver_, system.sleeper, system.dateProvider),
      pingMonitor(system.loop,
                  {.pollInterval = 2.0,
                   .internetTarget = "1.1.1.1",
                   .maxHistorySampleCount = 60,
                   .commandTimeout = 1.5,
                   .routerIgnoreFailureThreshold = 3},
                  pingProbeRunner_, system.sleeper, system.dateProvider),
      dnsMonitor(system.loop,
                 {.pollInterval = 2.0,
                  .maxHistorySampleCount = 60,
                  .commandTimeout = 1.5,
                  .testDomains = DNSMonitor::defaultTestDomains()},
                 dnsLookupRunner_, system.sleeper, system.dateProvider),
      connectionMonitor(system.loop, {.pollInterval = 2.0, .maxHistorySampleCount = 60, .commandTimeout = 1.5},
                        connectionCounter_, system.sleeper, system.dateProvider),
      captivePortalMonitor(system.loop, {.pollInterval = 2.0, .maxHistorySampleCount = 60, .commandTimeout = 3.5},
                           captivePortalChecker_, system.sleeper, system.dateProvider),
      lifecycleController(
          system.loop,
          {.activePollInterval = 0.5, .backgroundPollInterval = 4.0, .networkChangeFastPollingDuration = 30.0},
          {wifiMonitor, pingMonitor, dnsMonitor, connectionMonitor, captivePortalMonitor}, networkChangeObserver,
          sleepWakeObserver, system.sleeper, settingsStore, &wifiMonitor.latestIdentity),
      healthAggregationController(system.loop,
                                  {lifecycleController.isMonitoringEnabled, wifiMonitor.isConnected,
                                   wifiMonitor.latestSnapshot, pingMonitor.routerResult, pingMonitor.internetResult,
                                   pingMonitor.isRouterIgnored, dnsMonitor.latestResult},
                                  system.dateProvider) {}

DashboardSources Monitoring::dashboardSources() {
    return {.isMonitoringEnabled = lifecycleController.isMonitoringEnabled,
            .statusMessage = [this] { return lifecycleController.statusMessage(); },
            .healthState = healthAggregationController.healthState,
            .isConnected = wifiMonitor.isConnected,
            .latestSnapshot = wifiMonitor.latestSnapshot,
            .wifiHistory = wifiMonitor.history,
            .routerIPAddress = pingMonitor.routerIPAddress,
            .routerResult = pingMonitor.routerResult,
            .internetResult = pingMonitor.internetResult,
            .routerHistory = pingMonitor.routerHistory,
            .internetHistory = pingMonitor.internetHistory,
            .isRouterIgnored = pingMonitor.isRouterIgnored,
            .dnsResult = dnsMonitor.latestResult,
            .dnsHistory = dnsMonitor.history,
            .connectionResult = connectionMonitor.latestResult,
            .connectionQuality = connectionMonitor.connectionQuality,
            .connectionErrorMessage = connectionMonitor.lastErrorMessage,
            .captivePortalStatus = captivePortalMonitor.latestStatus,
            .captivePortalErrorMessage = captivePortalMonitor.lastErrorMessage};
}

} // namespace tolvo
