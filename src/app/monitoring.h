#pragma once

#include "app/system_services.h"
#include "core/monitoring_lifecycle_controller.h"
#include "integration/location_permission_controller.h"
#include "monitors/captive_portal_monitor.h"
#include "monitors/connection_monitor.h"
#include "monitors/dns_monitor.h"
#include "monitors/health_aggregation_controller.h"
#include "monitors/ping_monitor.h"
#include "monitors/url_session_captive_portal_checker.h"
#include "monitors/url_session_captive_portal_probe_fetcher.h"
#include "monitors/wifi_monitor.h"
#include "presentation/dashboard/dashboard_sources.h"
#include "probes/command_line_dns_lookup_runner.h"
#include "probes/command_line_ping_probe_runner.h"
#include "probes/command_line_tcp_connection_counter.h"
#include "probes/core_wlan_interface_provider.h"
#include "probes/core_wlan_network_scanner.h"
#include "probes/shell_command_runner.h"
#include "probes/shell_wifi_network_metadata_resolver.h"

namespace tolvo {

/// The continuous monitors with their probes, and who decides over them, each built from those before it. Building
/// starts nothing.
class Monitoring {
public:
    Monitoring(SystemServices& system, NetworkChangeObserving& networkChangeObserver,
               SleepWakeObserving& sleepWakeObserver, AppSettingsStoring& settingsStore);
    Monitoring(const Monitoring&) = delete;
    Monitoring& operator=(const Monitoring&) = delete;

    DashboardSources dashboardSources();

private:
    // Each object that runs commands has a runner of its own.
    ShellCommandRunner pingRunner_;
    ShellCommandRunner dnsRunner_;
    ShellCommandRunner connectionRunner_;
    ShellCommandRunner metadataRunner_;
    CommandLinePingProbeRunner pingProbeRunner_;
    CommandLineDNSLookupRunner dnsLookupRunner_;
    CommandLineTCPConnectionCounter connectionCounter_;
    ShellWiFiNetworkMetadataResolver metadataResolver_;
    URLSessionCaptivePortalProbeFetcher probeFetcher_;
    URLSessionCaptivePortalChecker captivePortalChecker_;

public:
    CoreWLANInterfaceProvider interfaceProvider;
    CoreWLANNetworkScanner networkScanner;
    WiFiMonitor wifiMonitor;
    PingMonitor pingMonitor;
    DNSMonitor dnsMonitor;
    ConnectionMonitor connectionMonitor;
    CaptivePortalMonitor captivePortalMonitor;
    MonitoringLifecycleController lifecycleController;
    HealthAggregationController healthAggregationController;
};

} // namespace tolvo
