#include "app/report_run.h"

#include "core/async/sleep.h"
#include "core/async/task_group.h"

#include <utility>

namespace tolvo {

namespace {

/// Seconds that the monitors get for their first results.
constexpr double firstResultsDeadline = 15;

Task<bool> afterDeadline() {
    co_await sleepFor(Seconds(firstResultsDeadline));
    co_return true;
}

Task<bool> untilTold(Signal change) {
    co_await change.wait();
    co_return false;
}

} // namespace

ReportRun::ReportRun(AppDelegate& delegate, Progress progress, Completion completion)
    : system_(delegate.system()),
      monitoring_(delegate.monitoring()),
      collection_(delegate.onDemandTests().diagnosticsCollection),
      progress_(std::move(progress)),
      completion_(std::move(completion)),
      tasks_(system_.loop) {}

void ReportRun::start() {
    tasks_.start(run());
}

Task<void> ReportRun::run() {
    // The user's switch stays as it is: a report is asked for, so there is something to measure.
    monitoring_.lifecycleController.isPopoverPresented.set(true);
    monitoring_.lifecycleController.enableMonitoring();
    monitoring_.lifecycleController.applyPollInterval();
    co_await waitForFirstResults();
    co_await collect();
    completion_(collection_.collectedReportJSONString.value().value_or(""), collection_.fileName());
}

bool ReportRun::haveAllMonitorsResults() const {
    const bool hasWiFi =
        monitoring_.wifiMonitor.latestSnapshot.value() || !monitoring_.interfaceProvider.currentSnapshot().has_value();
    const bool hasRouter =
        monitoring_.pingMonitor.routerResult.value() || !monitoring_.pingMonitor.routerIPAddress.value();
    return hasWiFi && hasRouter && monitoring_.pingMonitor.internetResult.value() &&
           monitoring_.dnsMonitor.latestResult.value() &&
           (monitoring_.connectionMonitor.latestResult.value() ||
            monitoring_.connectionMonitor.lastErrorMessage.value()) &&
           (monitoring_.captivePortalMonitor.latestStatus.value() ||
            monitoring_.captivePortalMonitor.lastErrorMessage.value());
}

Task<void> ReportRun::waitForFirstResults() {
    progress_(0, "Waiting for the first measurements...");
    const auto told = [this] { change_.notify(); };
    subscriptions_ =
        subscribeToEach(told, monitoring_.wifiMonitor.latestSnapshot, monitoring_.pingMonitor.internetResult,
                        monitoring_.dnsMonitor.latestResult, monitoring_.connectionMonitor.latestResult,
                        monitoring_.connectionMonitor.lastErrorMessage, monitoring_.captivePortalMonitor.latestStatus,
                        monitoring_.captivePortalMonitor.lastErrorMessage);
    TaskGroup<bool> waits(co_await currentContext());
    waits.add(afterDeadline());
    while (!haveAllMonitorsResults()) {
        waits.add(untilTold(change_));
        if (co_await waits.next() == true)
            break;
    }
    subscriptions_.clear();
}

Task<void> ReportRun::collect() {
    subscriptions_ = subscribeToEach([this] { change_.notify(); }, collection_.isCollectingReport,
                                     collection_.collectionProgress, collection_.collectionMessage);
    collection_.collect();
    while (collection_.isCollectingReport.value()) {
        co_await change_.wait();
        tellProgress();
    }
    subscriptions_.clear();
}

void ReportRun::tellProgress() {
    progress_(collection_.collectionProgress.value(), collection_.collectionMessage.value());
}

} // namespace tolvo
