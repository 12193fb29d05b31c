#include "app/terminal_front_end.h"

#include "app/process_environment.h"
#include "platform/linux/posix_locale.h"

#include <utility>

namespace tolvo {

namespace {

TerminalGlyphs glyphsOfLocale() {
    return isUTF8Locale() ? TerminalGlyphs::Unicode : TerminalGlyphs::ASCII;
}

WiFiRadarPage::Actions radarActions(OnDemandTests& tests) {
    return {.start = [&tests] { tests.startRadar(); }, .stop = [&tests] { tests.stopRadar(); }};
}

} // namespace

Task<std::optional<std::filesystem::path>> CurrentFolderSaveDialog::runSaveDialog(SaveDialogRequest request) {
    // Relative, since the folder may be gone; then the writing fails, and says so.
    co_return request.fileName;
}

TerminalScreenFrontEnd::TerminalScreenFrontEnd(AppDelegate& delegate, TextTerminal& terminal,
                                               std::function<void()> onQuit)
    : lifecycle_(delegate.monitoring().lifecycleController),
      monitorPage_(delegate.monitoring().dashboardSources(), lifecycle_.isBatteryFriendly,
                   {[this](bool isEnabled) { lifecycle_.setMonitoringEnabled(isEnabled); },
                    [this](bool isFriendly) { lifecycle_.setBatteryFriendly(isFriendly); }},
                   glyphsOfLocale(), localeNumberFormat(), delegate.system().isAirSimulated),
      speedTestPage_(delegate.onDemandTests().speedTestSources(), delegate.onDemandTests().speedTestActions(),
                     speedTestNotice(), glyphsOfLocale(), localeNumberFormat(), localeShortTime),
      channelScanPage_(delegate.onDemandTests().channelScanSources(),
                       delegate.onDemandTests().channelScanMonitor.lastErrorMessage,
                       {[&scan = delegate.onDemandTests().channelScanMonitor] { scan.toggleScan(); }}, glyphsOfLocale(),
                       localeNumberFormat()),
      radarPage_(delegate.onDemandTests().wifiRadarSources(), radarActions(delegate.onDemandTests()), glyphsOfLocale()),
      exportController_(delegate.system().loop, delegate.onDemandTests().diagnosticsCollection, clipboard_, saveDialog_,
                        fileWriter_, localeDateTime),
      reportPage_(exportController_, delegate.onDemandTests().diagnosticsCollection, glyphsOfLocale()),
      controller_(delegate.system().loop, terminal, glyphsOfLocale(), monitorPage_,
                  {{"s", &speedTestPage_}, {"c", &channelScanPage_}, {"r", &radarPage_}, {"e", &reportPage_}},
                  std::move(onQuit)) {}

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
      content_(delegate.monitoring().dashboardSources(), delegate.system().isAirSimulated),
      output_(output),
      onQuit_(std::move(onQuit)) {}

void JSONLinesFrontEnd::install() {
    timer_ = system_.loop.after(Seconds(1), [this] { writeLine(); });
}

void JSONLinesFrontEnd::writeLine() {
    timer_ = system_.loop.after(Seconds(1), [this] { writeLine(); });
    const std::string line = content_.line(system_.dateProvider()) + "\n";
    if (output_.write(line) == TextTerminal::WriteOutcome::Closed)
        onQuit_();
}

} // namespace tolvo
