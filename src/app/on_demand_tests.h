#pragma once

#include "app/monitoring.h"
#include "app/system_services.h"
#include "export/diagnostics_collection.h"
#include "ondemand/channel_scan_monitor.h"
#include "ondemand/cloudflare_speed_test_runner.h"
#include "ondemand/ping_probe_latency_prober.h"
#include "ondemand/speed_test_monitor.h"
#include "ondemand/wifi_radar_monitor.h"
#include "ondemand/wifi_radar_nearby_networks_controller.h"
#include "presentation/channel_scan/channel_scan_content.h"
#include "presentation/speed_test/speed_test_content.h"
#include "presentation/wifi_radar/wifi_radar_content.h"

namespace tolvo {

/// The server of the speed test: the build's, or the user's own (TOLVO_SPEED_TEST_URL). Nothing if that is no URL; the
/// test then fails, and says so.
std::optional<URL> speedTestURL();

/// Whose server that is, in a word.
std::string speedTestServerTag();
/// What the speed test will transfer, and with whom.
std::string speedTestNotice();

/// The tests that run when they are asked for, and the collection of all results into a report. Building starts
/// nothing.
class OnDemandTests {
public:
    OnDemandTests(SystemServices& system, Monitoring& monitoring);
    OnDemandTests(const OnDemandTests&) = delete;
    OnDemandTests& operator=(const OnDemandTests&) = delete;

    SpeedTestSources speedTestSources();
    SpeedTestActions speedTestActions();
    /// The radar follows the link and looks for networks while somebody looks at it.
    void startRadar();
    void stopRadar();
    ChannelScanSources channelScanSources();
    WiFiRadarSources wifiRadarSources();

private:
    Monitoring& monitoring_;
    ShellCommandRunner latencyRunner_;
    CommandLinePingProbeRunner pingProbeRunner_;
    PingProbeLatencyProber latencyProbe_;
    CloudflareSpeedTestRunner speedTestRunner_;

public:
    SpeedTestMonitor speedTestMonitor;
    ChannelScanMonitor channelScanMonitor;
    WiFiRadarMonitor radarMonitor;
    WiFiRadarNearbyNetworksController nearbyNetworksController;
    DiagnosticsCollection diagnosticsCollection;
};

} // namespace tolvo
