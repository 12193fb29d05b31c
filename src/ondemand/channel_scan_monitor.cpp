#include "ondemand/channel_scan_monitor.h"

#include "ondemand/channel_scan_analysis.h"

#include <utility>

namespace tolvo {

namespace {

std::string failureMessage(const WiFiNetworkScannerError& error) {
    const bool isUnavailable = error.kind == WiFiNetworkScannerError::Kind::InterfaceUnavailable;
    return "Channel scan failed: " + (isUnavailable ? "No Wi-Fi interface is available." : error.description);
}

} // namespace

ChannelScanMonitor::ChannelScanMonitor(MainLoop& loop, ChannelScanConfiguration configuration,
                                       WiFiNetworkScanning& scanner,
                                       CurrentWiFiSnapshotProvider currentWiFiSnapshotProvider, SleepProviding& sleeper,
                                       DateProvider dateProvider)
    : configuration_(configuration),
      scanner_(scanner),
      currentWiFiSnapshotProvider_(std::move(currentWiFiSnapshotProvider)),
      sleeper_(sleeper),
      dateProvider_(std::move(dateProvider)),
      tasks_(loop) {}

void ChannelScanMonitor::startScan() {
    if (runningTask_)
        return;
    // The task begins in a later turn; having the handle first keeps a subscriber from starting a second run.
    runningTask_ = tasks_.start(run());
    lastErrorMessage.set(std::nullopt);
    completedPasses.set(0);
    totalPasses.set(configuration_.passCount);
    isScanning.set(true);
}

void ChannelScanMonitor::cancelScan() {
    if (runningTask_)
        runningTask_->cancel();
}

void ChannelScanMonitor::toggleScan() {
    if (isScanning.value())
        cancelScan();
    else
        startScan();
}

Task<void> ChannelScanMonitor::run() {
    try {
        const Passes passes = co_await collectPasses();
        if (passes)
            finish(*passes);
        else
            lastErrorMessage.set(failureMessage(passes.error()));
    } catch (const CancellationError&) {
        lastErrorMessage.set("Channel scan cancelled.");
    }
    end();
}

Task<ChannelScanMonitor::Passes> ChannelScanMonitor::collectPasses() {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    std::vector<ChannelScanPass> passes;
    for (std::int64_t index = 0; index < configuration_.passCount; ++index) {
        if (stopToken.stop_requested())
            throw CancellationError();
        auto networks = co_await scanner_.scanNetworks();
        if (!networks)
            co_return std::unexpected(std::move(networks.error()));
        passes.push_back(std::move(*networks));
        completedPasses.set(index + 1);
        if (index + 1 < configuration_.passCount)
            co_await sleeper_.sleep(configuration_.pauseBetweenPasses);
    }
    co_return passes;
}

void ChannelScanMonitor::finish(const std::vector<ChannelScanPass>& passes) {
    // Read only now, so that a roam during the run is seen.
    CurrentChannel current;
    if (const auto snapshot = currentWiFiSnapshotProvider_())
        current = {snapshot->channelNumber, snapshot->band};
    latestResult.set(analyzeChannelScan(passes, configuration_.passCount, current, dateProvider_()));
}

void ChannelScanMonitor::end() {
    runningTask_.reset();
    isScanning.set(false);
}

} // namespace tolvo
