#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "core/model/speed_test_result.h"
#include "core/model/wall_time.h"
#include "core/sleep_providing.h"
#include "ondemand/bufferbloat.h"
#include "ondemand/speed_test_latency_probing.h"
#include "ondemand/speed_testing.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Runs one speed test on demand: idle latency, then download and upload, each with latency sampled beside it. The
/// figures stay as far as a test came; only a finished one has a result. Main thread only.
class SpeedTestMonitor {
public:
    struct Configuration {
        SpeedTestConfiguration transfer{};
        std::string latencyProbeHost = "1.1.1.1";
        double latencyProbeTimeout = 2.0;
        std::int64_t baselineProbeAttempts = 5;
        /// Seconds from the end of a sample to the start of the next.
        double phaseLatencySamplingInterval = 0.35;
        BufferbloatGradeThresholds gradeThresholds{};
    };

    SpeedTestMonitor(MainLoop& loop, Configuration configuration, SpeedTesting& speedTestRunner,
                     SpeedTestLatencyProbing& latencyProbe, SleepProviding& sleeper, DateProvider dateProvider);
    SpeedTestMonitor(const SpeedTestMonitor&) = delete;
    SpeedTestMonitor& operator=(const SpeedTestMonitor&) = delete;

    /// Does nothing during a test.
    void startTest();
    /// Returns at once; isRunning tells when the test has ended.
    void cancelTest();

    /// Cleared at every start.
    Published<std::optional<SpeedTestResult>> latestResult;
    Published<bool> isRunning;
    /// Download during the idle latency, too.
    Published<SpeedTestPhase> phase;
    /// 0 to 1.
    Published<double> progress;
    Published<std::optional<double>> downloadMbps;
    Published<std::optional<double>> uploadMbps;
    /// The median of the probes that had a reply.
    Published<std::optional<double>> baselineLatencyMilliseconds;
    /// The mean of the samples under load.
    Published<std::optional<double>> downloadLoadedLatencyMilliseconds;
    Published<std::optional<double>> uploadLoadedLatencyMilliseconds;
    Published<std::optional<double>> downloadBufferbloatRatio;
    Published<std::optional<double>> uploadBufferbloatRatio;
    Published<std::optional<BufferbloatGrade>> downloadBufferbloatGrade;
    Published<std::optional<BufferbloatGrade>> uploadBufferbloatGrade;
    /// From 1.
    Published<std::vector<std::int64_t>> baselineProbeFailedAttemptIndices;
    Published<std::optional<std::string>> lastErrorMessage;

private:
    using Samples = std::vector<double>;

    /// What the two directions differ in.
    struct Stage {
        SpeedTestPhase phase;
        double progressAtStart;
        Task<SpeedTestOutcome> (SpeedTesting::*measure)(SpeedTestConfiguration, SpeedTestProgress);
        Published<std::optional<double>>& throughputMbps;
        Published<std::optional<double>>& loadedLatencyMilliseconds;
        Published<std::optional<double>>& bufferbloatRatio;
        Published<std::optional<BufferbloatGrade>>& bufferbloatGrade;
    };

    void clearFigures();
    Task<void> run();
    Task<void> measure();
    Task<void> measureBaseline();
    /// Whether the transfer succeeded; when not, the test is over.
    Task<bool> measureUnderLoad(Stage stage);
    Task<void> sampleLatency(std::shared_ptr<Samples> samples);
    Task<std::optional<double>> probeOnce();
    Task<void> publishProgress(SpeedTestPhase stagePhase, double progressAtStart, double fraction);
    void publishLatency(const Stage& stage, const Samples& samples);
    void complete();
    void stopShort(SpeedTestPhase endPhase);
    Stage downloadStage();
    Stage uploadStage();

    const Configuration configuration_;
    SpeedTesting& speedTestRunner_;
    SpeedTestLatencyProbing& latencyProbe_;
    SleepProviding& sleeper_;
    const DateProvider dateProvider_;
    std::optional<TaskHandle> runningTask_;
    TaskScope tasks_;
};

} // namespace tolvo
