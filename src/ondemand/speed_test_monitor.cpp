#include "ondemand/speed_test_monitor.h"

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

std::string messageOf(const SpeedTestError& error) {
    if (const auto* transport = std::get_if<URLSessionError>(&error))
        return transport->description;
    switch (std::get<SpeedTestRunnerError>(error)) {
    case SpeedTestRunnerError::InvalidRequest:
        return "Speed test request configuration is invalid.";
    case SpeedTestRunnerError::InvalidResponse:
        return "Speed test server returned an unexpected response.";
    case SpeedTestRunnerError::NoDataTransferred:
        return "Speed test transferred no data.";
    }
    return {};
}

/// Cancels a task on every way out of a block.
class CancelAtExit {
public:
    explicit CancelAtExit(const TaskHandle& task) : task_(task) {}
    CancelAtExit(const CancelAtExit&) = delete;
    CancelAtExit& operator=(const CancelAtExit&) = delete;
    ~CancelAtExit() { task_.cancel(); }

private:
    const TaskHandle& task_;
};

} // namespace

SpeedTestMonitor::SpeedTestMonitor(MainLoop& loop, Configuration configuration, SpeedTesting& speedTestRunner,
                                   SpeedTestLatencyProbing& latencyProbe, SleepProviding& sleeper,
                                   DateProvider dateProvider)
    : configuration_(std::move(configuration)),
      speedTestRunner_(speedTestRunner),
      latencyProbe_(latencyProbe),
      sleeper_(sleeper),
      dateProvider_(std::move(dateProvider)),
      tasks_(loop) {}

void SpeedTestMonitor::startTest() {
    if (runningTask_)
        return;
    // The task begins in a later turn; having the handle first keeps a subscriber from starting a second run.
    runningTask_ = tasks_.start(run());
    clearFigures();
    progress.set(0);
    phase.set(SpeedTestPhase::Download);
    isRunning.set(true);
}

void SpeedTestMonitor::cancelTest() {
    if (runningTask_)
        runningTask_->cancel();
}

void SpeedTestMonitor::clearFigures() {
    latestResult.set(std::nullopt);
    lastErrorMessage.set(std::nullopt);
    for (auto* figure : {&downloadMbps, &uploadMbps, &baselineLatencyMilliseconds, &downloadLoadedLatencyMilliseconds,
                         &uploadLoadedLatencyMilliseconds, &downloadBufferbloatRatio, &uploadBufferbloatRatio})
        figure->set(std::nullopt);
    downloadBufferbloatGrade.set(std::nullopt);
    uploadBufferbloatGrade.set(std::nullopt);
    baselineProbeFailedAttemptIndices.set({});
}

Task<void> SpeedTestMonitor::run() {
    try {
        co_await measure();
    } catch (const CancellationError&) {
        stopShort(SpeedTestPhase::Cancelled);
    }
    runningTask_.reset();
    isRunning.set(false);
}

Task<void> SpeedTestMonitor::measure() {
    co_await measureBaseline();
    if (!co_await measureUnderLoad(downloadStage()))
        co_return;
    progress.set(0.5);
    phase.set(SpeedTestPhase::Upload);
    if (co_await measureUnderLoad(uploadStage()))
        complete();
}

Task<void> SpeedTestMonitor::measureBaseline() {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    Samples samples;
    std::vector<std::int64_t> failedAttempts;
    for (std::int64_t attempt = 1; attempt <= configuration_.baselineProbeAttempts; ++attempt) {
        if (stopToken.stop_requested())
            throw CancellationError();
        if (const auto latency = co_await probeOnce())
            samples.push_back(*latency);
        else
            failedAttempts.push_back(attempt);
    }
    baselineLatencyMilliseconds.set(median(std::move(samples)));
    baselineProbeFailedAttemptIndices.set(std::move(failedAttempts));
}

Task<bool> SpeedTestMonitor::measureUnderLoad(Stage stage) {
    if ((co_await currentContext()).stopToken.stop_requested())
        throw CancellationError();
    const auto samples = std::make_shared<Samples>();
    const TaskHandle sampling = tasks_.start(sampleLatency(samples));
    const CancelAtExit guard(sampling);
    const auto outcome = co_await (speedTestRunner_.*stage.measure)(
        configuration_.transfer,
        [this, stagePhase = stage.phase, progressAtStart = stage.progressAtStart](double fraction) {
            return publishProgress(stagePhase, progressAtStart, fraction);
        });
    if (!outcome) {
        stopShort(SpeedTestPhase::Failed);
        lastErrorMessage.set(messageOf(outcome.error()));
        co_return false;
    }
    sampling.cancel();
    co_await sampling.completion();
    stage.throughputMbps.set(outcome->throughputMbps);
    publishLatency(stage, *samples);
    co_return true;
}

Task<void> SpeedTestMonitor::sampleLatency(std::shared_ptr<Samples> samples) {
    const std::stop_token stopToken = (co_await currentContext()).stopToken;
    while (!stopToken.stop_requested()) {
        if (const auto latency = co_await probeOnce())
            samples->push_back(*latency);
        co_await sleeper_.sleep(configuration_.phaseLatencySamplingInterval);
    }
}

Task<std::optional<double>> SpeedTestMonitor::probeOnce() {
    const auto measurement =
        co_await latencyProbe_.probeLatency(configuration_.latencyProbeHost, configuration_.latencyProbeTimeout);
    co_return measurement.didSucceed ? measurement.latencyMilliseconds : std::nullopt;
}

Task<void> SpeedTestMonitor::publishProgress(SpeedTestPhase stagePhase, double progressAtStart, double fraction) {
    phase.set(stagePhase);
    progress.set(fraction > 0 ? progressAtStart + std::min(fraction, 1.0) * 0.5 : progressAtStart);
    co_return;
}

void SpeedTestMonitor::publishLatency(const Stage& stage, const Samples& samples) {
    const auto loaded = mean(samples);
    const auto ratio = bufferbloatRatio(loaded, baselineLatencyMilliseconds.value());
    stage.loadedLatencyMilliseconds.set(loaded);
    stage.bufferbloatRatio.set(ratio);
    stage.bufferbloatGrade.set(ratio ? std::optional(bufferbloatGrade(*ratio, configuration_.gradeThresholds))
                                     : std::nullopt);
}

void SpeedTestMonitor::complete() {
    progress.set(1.0);
    phase.set(SpeedTestPhase::Completed);
    latestResult.set(SpeedTestResult{.timestamp = dateProvider_(),
                                     .downloadMbps = *downloadMbps.value(),
                                     .uploadMbps = *uploadMbps.value(),
                                     .baselineLatencyMilliseconds = baselineLatencyMilliseconds.value(),
                                     .downloadLoadedLatencyMilliseconds = downloadLoadedLatencyMilliseconds.value(),
                                     .uploadLoadedLatencyMilliseconds = uploadLoadedLatencyMilliseconds.value(),
                                     .downloadBufferbloatRatio = downloadBufferbloatRatio.value(),
                                     .uploadBufferbloatRatio = uploadBufferbloatRatio.value(),
                                     .downloadBufferbloatGrade = downloadBufferbloatGrade.value(),
                                     .uploadBufferbloatGrade = uploadBufferbloatGrade.value(),
                                     .didSucceed = true});
}

void SpeedTestMonitor::stopShort(SpeedTestPhase endPhase) {
    progress.set(0);
    phase.set(endPhase);
}

SpeedTestMonitor::Stage SpeedTestMonitor::downloadStage() {
    return {SpeedTestPhase::Download,          0,
            &SpeedTesting::measureDownload,    downloadMbps,
            downloadLoadedLatencyMilliseconds, downloadBufferbloatRatio,
            downloadBufferbloatGrade};
}

SpeedTestMonitor::Stage SpeedTestMonitor::uploadStage() {
    return {SpeedTestPhase::Upload,          0.5,
            &SpeedTesting::measureUpload,    uploadMbps,
            uploadLoadedLatencyMilliseconds, uploadBufferbloatRatio,
            uploadBufferbloatGrade};
}

} // namespace tolvo
