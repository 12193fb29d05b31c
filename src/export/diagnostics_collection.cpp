#include "export/diagnostics_collection.h"

#include "export/diagnostics_export_json.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <utility>

namespace tolvo {

namespace {

constexpr double stagePauseSeconds = 0.18;
/// What these stand for is known already; a pause lets a person see them.
constexpr std::array shownStages{CollectionStage::Metrics, CollectionStage::WiFi, CollectionStage::Latency};
constexpr double testPollSeconds = 0.2;
constexpr double channelScanDeadlineSeconds = 24;
constexpr double speedTestDeadlineSeconds = 95;
constexpr std::string_view encodingFallback = "{ \"error\": \"Unable to encode diagnostics export.\" }";

} // namespace

DiagnosticsCollection::DiagnosticsCollection(MainLoop& loop, DiagnosticsCollectionSources sources,
                                             SleepProviding& sleeper, DateProvider dateProvider)
    : loop_(loop),
      sources_(std::move(sources)),
      sleeper_(sleeper),
      dateProvider_(std::move(dateProvider)),
      tasks_(loop) {}

void DiagnosticsCollection::collect() {
    if (isCollectingReport.value())
        return;
    isCollectingReport.set(true);
    collectedReport.set(std::nullopt);
    collectedReportJSONString.set(std::nullopt);
    completedStages.set({});
    begin(CollectionStage::Metrics);
    tasks_.start(run());
}

Task<void> DiagnosticsCollection::run() {
    for (const auto stage : shownStages) {
        begin(stage);
        co_await pause(stagePauseSeconds);
        complete(stage);
    }

    begin(CollectionStage::Channel);
    Message channelScanMessage =
        co_await waitFor(sources_.channelScan, channelScanDeadlineSeconds, "Channel scan timed out.");
    complete(CollectionStage::Channel);

    begin(CollectionStage::Speed);
    Message speedTestMessage = co_await waitFor(sources_.speedTest, speedTestDeadlineSeconds, "Speed test timed out.");
    complete(CollectionStage::Speed);

    begin(CollectionStage::Finalize);
    buildReport(std::move(channelScanMessage), std::move(speedTestMessage));
    complete(CollectionStage::Finalize);

    collectionProgress.set(1);
    collectionMessage.set("Report ready.");
    isCollectingReport.set(false);
}

Task<DiagnosticsCollection::Message> DiagnosticsCollection::waitFor(const OnDemandTest& test, double deadlineSeconds,
                                                                    std::string timeoutMessage) {
    if (!test.isRunning.value())
        test.start();
    const MonotonicTime deadline = loop_.now() + std::chrono::round<MonotonicTime::duration>(Seconds(deadlineSeconds));
    while (loop_.now() < deadline) {
        if (!test.isRunning.value())
            co_return std::nullopt;
        co_await pause(testPollSeconds);
    }
    if (!test.isRunning.value())
        co_return std::nullopt;
    test.cancel();
    co_return test.lastErrorMessage.value().value_or(std::move(timeoutMessage));
}

void DiagnosticsCollection::buildReport(Message channelScanMessage, Message speedTestMessage) {
    DiagnosticsExportInput input = currentInput();
    if (channelScanMessage)
        input.channelScanLastErrorMessage = std::move(channelScanMessage);
    if (speedTestMessage)
        input.speedTestLastErrorMessage = std::move(speedTestMessage);
    DiagnosticsExportReport report = makeDiagnosticsExportReport(input);
    std::string text = jsonString(report).value_or(std::string(encodingFallback));
    collectedReport.set(std::move(report));
    collectedReportJSONString.set(std::move(text));
}

DiagnosticsExportInput DiagnosticsCollection::currentInput() const {
    return {
        .exportedAt = dateProvider_(),
        .appVersion = sources_.appVersion,
        .appBuild = sources_.appBuild,
        .monitoringEnabled = sources_.isMonitoringEnabled.value(),
        .batteryFriendlyModeEnabled = sources_.isBatteryFriendly.value(),
        .diagnosticsSnapshot = sources_.latestDiagnosticsSnapshot.value(),
        .connectionResult = sources_.connectionResult.value(),
        .connectionLastErrorMessage = sources_.connectionErrorMessage.value(),
        .captivePortalStatus = sources_.captivePortalStatus.value(),
        .captivePortalLastErrorMessage = sources_.captivePortalErrorMessage.value(),
        .speedTestResult = sources_.speedTestResult.value(),
        .speedTestPhase = sources_.speedTestPhase.value(),
        .speedTestLastErrorMessage = sources_.speedTest.lastErrorMessage.value(),
        .channelScanResult = sources_.channelScanResult.value(),
        .channelScanLastErrorMessage = sources_.channelScan.lastErrorMessage.value(),
    };
}

void DiagnosticsCollection::begin(CollectionStage stage) {
    const CollectionStageDescription& description = descriptionOf(stage);
    collectionMessage.set(std::string(description.title) + "...");
    collectionProgress.set(std::clamp(description.progressOnEntry, 0.0, 1.0));
}

void DiagnosticsCollection::complete(CollectionStage stage) {
    auto stages = completedStages.value();
    stages.insert(stage);
    completedStages.set(std::move(stages));
}

// In a task of its own: a sleep that fails is over, and through the loop's queue, so that even a sleeper that always
// fails can't hold the loop.
Task<void> DiagnosticsCollection::pause(double seconds) {
    co_await tasks_.start(sleep(seconds)).completion();
}

Task<void> DiagnosticsCollection::sleep(double seconds) {
    co_await sleeper_.sleep(seconds);
}

std::string DiagnosticsCollection::fileName() const {
    const auto& report = collectedReport.value();
    const std::time_t time = std::chrono::system_clock::to_time_t(
        std::chrono::floor<std::chrono::seconds>(report ? report->exportedAt : dateProvider_()));
    std::array<char, 32> stamp{"00000000-000000"};
    if (const std::tm* local = std::localtime(&time))
        std::strftime(stamp.data(), stamp.size(), "%Y%m%d-%H%M%S", local);
    return std::string("tolvo-diagnostics-").append(stamp.data()).append(".json");
}

} // namespace tolvo
