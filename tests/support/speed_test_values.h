#pragma once

#include "presentation/speed_test/speed_test_content.h"

namespace tolvo::testing {

/// All that a speed test publishes, to be set at will.
struct SpeedTestValues {
    Published<bool> isRunning;
    Published<SpeedTestPhase> phase{SpeedTestPhase::Idle};
    Published<double> progress;
    Published<std::optional<double>> download, upload, baseline, downloadLoaded, uploadLoaded, downloadRatio,
        uploadRatio;
    Published<std::optional<BufferbloatGrade>> downloadGrade, uploadGrade;
    Published<std::optional<SpeedTestResult>> latestResult;
    Published<std::optional<std::string>> errorMessage;
    const SpeedTestSources sources{isRunning,     phase,          progress,     download,      upload,
                                   baseline,      downloadLoaded, uploadLoaded, downloadRatio, uploadRatio,
                                   downloadGrade, uploadGrade,    latestResult, errorMessage};
};

} // namespace tolvo::testing
