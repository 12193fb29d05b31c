#include "app/on_demand_tests.h"

#include "app/process_environment.h"
#include "probes/tool_table.h"

namespace tolvo {

namespace {

DiagnosticsCollectionSources collectionSources(const BundleInformation& bundle, Monitoring& monitoring,
                                               ChannelScanMonitor& scan, SpeedTestMonitor& speedTest) {
    return {.appVersion = bundle.objectForInfoDictionaryKey("CFBundleShortVersionString"),
            .appBuild = bundle.objectForInfoDictionaryKey("CFBundleVersion"),
            .isMonitoringEnabled = monitoring.lifecycleController.isMonitoringEnabled,
            .isBatteryFriendly = monitoring.lifecycleController.isBatteryFriendly,
            .latestDiagnosticsSnapshot = monitoring.healthAggregationController.latestDiagnosticsSnapshot,
            .connectionResult = monitoring.connectionMonitor.latestResult,
            .connectionErrorMessage = monitoring.connectionMonitor.lastErrorMessage,
            .captivePortalStatus = monitoring.captivePortalMonitor.latestStatus,
            .captivePortalErrorMessage = monitoring.captivePortalMonitor.lastErrorMessage,
            .channelScan = {scan.isScanning, scan.lastErrorMessage, [&scan] { scan.startScan(); },
                            [&scan] { scan.cancelScan(); }},
            .channelScanResult = scan.latestResult,
            .speedTest = {speedTest.isRunning, speedTest.lastErrorMessage, [&speedTest] { speedTest.startTest(); },
                          [&speedTest] { speedTest.cancelTest(); }},
            .speedTestResult = speedTest.latestResult,
            .speedTestPhase = speedTest.phase};
}

} // namespace

std::optional<URL> speedTestURL() {
    if (const auto own = environmentVariable("TOLVO_SPEED_TEST_URL"))
        return URL::parse(*own);
    return defaultSpeedTestURL();
}

std::string speedTestServerTag() {
    const auto url = speedTestURL();
    return url ? speedTestServerTag(*url) : environmentVariable("TOLVO_SPEED_TEST_URL").value_or("");
}

std::string speedTestNotice() {
    const auto url = speedTestURL();
    if (!url || url->host().empty())
        return "TOLVO_SPEED_TEST_URL is not a web address, so the test will fail.";
    return "It transfers 32 MB down and 12 MB up with " + url->host() + ".";
}

OnDemandTests::OnDemandTests(SystemServices& system, Monitoring& monitoring)
    : monitoring_(monitoring),
      latencyRunner_(system.processService, allowedToolPaths()),
      pingProbeRunner_(latencyRunner_, system.regularExpressions, system.addressParser,
                       {.pingPacketCount = 1, .commandTimeoutGracePeriod = 0.5}, [] { return std::nullopt; }),
      latencyProbe_(pingProbeRunner_),
      speedTestRunner_(system.loop, system.urlSession, speedTestEndpoint(speedTestURL())),
      speedTestMonitor(
          system.loop,
          {.transfer = {.downloadChunkSizeBytes = 8'000'000,
                        .downloadChunks = 4,
                        .uploadChunkSizeBytes = 3'000'000,
                        .uploadChunks = 4,
                        .requestTimeout = 10.0},
           .latencyProbeHost = "1.1.1.1",
           .latencyProbeTimeout = 2.0,
           .baselineProbeAttempts = 5,
           .phaseLatencySamplingInterval = 0.35,
           .gradeThresholds = {.aUpperBoundExclusive = 2.0, .bUpperBoundExclusive = 3.0, .cUpperBoundExclusive = 5.0}},
          speedTestRunner_, latencyProbe_, system.sleeper, system.dateProvider),
      channelScanMonitor(
          system.loop, {.passCount = 3, .pauseBetweenPasses = 0.35}, monitoring.networkScanner,
          [&monitoring] { return monitoring.wifiMonitor.latestSnapshot.value(); }, system.sleeper, system.dateProvider),
      radarMonitor(system.loop, {.pollInterval = 0.25, .maxHistorySampleCount = 120}, monitoring.interfaceProvider,
                   system.sleeper, system.dateProvider),
      nearbyNetworksController(system.loop, monitoring.networkScanner, 8.0),
      diagnosticsCollection(system.loop,
                            collectionSources(system.bundle, monitoring, channelScanMonitor, speedTestMonitor),
                            system.sleeper, system.dateProvider) {}

SpeedTestSources OnDemandTests::speedTestSources() {
    SpeedTestMonitor& monitor = speedTestMonitor;
    return {monitor.isRunning,
            monitor.phase,
            monitor.progress,
            monitor.downloadMbps,
            monitor.uploadMbps,
            monitor.baselineLatencyMilliseconds,
            monitor.downloadLoadedLatencyMilliseconds,
            monitor.uploadLoadedLatencyMilliseconds,
            monitor.downloadBufferbloatRatio,
            monitor.uploadBufferbloatRatio,
            monitor.downloadBufferbloatGrade,
            monitor.uploadBufferbloatGrade,
            monitor.latestResult,
            monitor.lastErrorMessage};
}

SpeedTestActions OnDemandTests::speedTestActions() {
    return {[this] { speedTestMonitor.startTest(); }, [this] { speedTestMonitor.cancelTest(); }};
}

void OnDemandTests::startRadar() {
    radarMonitor.start();
    nearbyNetworksController.start();
}

void OnDemandTests::stopRadar() {
    radarMonitor.stop();
    nearbyNetworksController.stop();
}

ChannelScanSources OnDemandTests::channelScanSources() {
    return {channelScanMonitor.latestResult, channelScanMonitor.isScanning, channelScanMonitor.completedPasses,
            channelScanMonitor.totalPasses};
}

WiFiRadarSources OnDemandTests::wifiRadarSources() {
    return {radarMonitor.latestSnapshot,
            radarMonitor.history,
            monitoring_.wifiMonitor.latestSnapshot,
            monitoring_.wifiMonitor.history,
            nearbyNetworksController.nearbyNetworks,
            nearbyNetworksController.lastErrorMessage};
}

} // namespace tolvo
