#include "app/terminal_front_end.h"

#include "app/process_environment.h"
#include "platform/linux/posix_locale.h"
#include "presentation/terminal/json_line_content.h"

#include <utility>

namespace tolvo {

namespace {

TerminalGlyphs glyphsOfLocale() {
    return isUTF8Locale() ? TerminalGlyphs::Unicode : TerminalGlyphs::ASCII;
}

} // namespace

DashboardSources dashboardSources(Monitoring& monitoring) {
    return {.isMonitoringEnabled = monitoring.lifecycleController.isMonitoringEnabled,
            .statusMessage = [&monitoring] { return monitoring.lifecycleController.statusMessage(); },
            .healthState = monitoring.healthAggregationController.healthState,
            .isConnected = monitoring.wifiMonitor.isConnected,
            .latestSnapshot = monitoring.wifiMonitor.latestSnapshot,
            .wifiHistory = monitoring.wifiMonitor.history,
            .routerIPAddress = monitoring.pingMonitor.routerIPAddress,
            .routerResult = monitoring.pingMonitor.routerResult,
            .internetResult = monitoring.pingMonitor.internetResult,
            .routerHistory = monitoring.pingMonitor.routerHistory,
            .internetHistory = monitoring.pingMonitor.internetHistory,
            .isRouterIgnored = monitoring.pingMonitor.isRouterIgnored,
            .dnsResult = monitoring.dnsMonitor.latestResult,
            .dnsHistory = monitoring.dnsMonitor.history,
            .connectionResult = monitoring.connectionMonitor.latestResult,
            .connectionQuality = monitoring.connectionMonitor.connectionQuality,
            .connectionErrorMessage = monitoring.connectionMonitor.lastErrorMessage,
            .captivePortalStatus = monitoring.captivePortalMonitor.latestStatus,
            .captivePortalErrorMessage = monitoring.captivePortalMonitor.lastErrorMessage};
}

TerminalScreenFrontEnd::TerminalScreenFrontEnd(AppDelegate& delegate, TextTerminal& terminal,
                                               std::function<void()> onQuit)
    : lifecycle_(delegate.monitoring().lifecycleController),
      monitorPage_(dashboardSources(delegate.monitoring()), lifecycle_.isBatteryFriendly,
                   {[this](bool isEnabled) { lifecycle_.setMonitoringEnabled(isEnabled); },
                    [this](bool isFriendly) { lifecycle_.setBatteryFriendly(isFriendly); }},
                   glyphsOfLocale(), localeNumberFormat(), delegate.system().isAirSimulated),
      controller_(delegate.system().loop, terminal, monitorPage_, {}, std::move(onQuit)) {}

void TerminalScreenFrontEnd::install() {
    controller_.enterScreen();
    lifecycle_.isPopoverPresented.set(true);
    lifecycle_.applyPollInterval();
    lifecycle_.refreshMonitorsNow();
}

void TerminalScreenFrontEnd::remove() {
    lifecycle_.isPopoverPresented.set(false);
    lifecycle_.applyPollInterval();
    controller_.leaveScreen();
}

JSONLinesFrontEnd::JSONLinesFrontEnd(AppDelegate& delegate, TextTerminal& output, std::function<void()> onQuit)
    : system_(delegate.system()),
      sources_(dashboardSources(delegate.monitoring())),
      output_(output),
      onQuit_(std::move(onQuit)) {}

void JSONLinesFrontEnd::install() {
    timer_ = system_.loop.after(Seconds(1), [this] { writeLine(); });
}

void JSONLinesFrontEnd::writeLine() {
    timer_ = system_.loop.after(Seconds(1), [this] { writeLine(); });
    const std::string line = jsonLine(sources_, system_.dateProvider(), system_.isAirSimulated) + "\n";
    if (output_.write(line) == TextTerminal::WriteOutcome::Closed)
        onQuit_();
}

} // namespace tolvo
