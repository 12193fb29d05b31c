#pragma once

#include "core/model/raw_value.h"
#include "core/model/wall_time.h"

#include <optional>

namespace tolvo {

/// There is no grade D or E.
enum class BufferbloatGrade { A, B, C, F };

template<>
inline constexpr RawValueTable<BufferbloatGrade, 4> rawValueTable<BufferbloatGrade>{{
    {BufferbloatGrade::A, "A"},
    {BufferbloatGrade::B, "B"},
    {BufferbloatGrade::C, "C"},
    {BufferbloatGrade::F, "F"},
}};

enum class SpeedTestPhase { Idle, Download, Upload, Completed, Cancelled, Failed };

template<>
inline constexpr RawValueTable<SpeedTestPhase, 6> rawValueTable<SpeedTestPhase>{{
    {SpeedTestPhase::Idle, "idle"},
    {SpeedTestPhase::Download, "download"},
    {SpeedTestPhase::Upload, "upload"},
    {SpeedTestPhase::Completed, "completed"},
    {SpeedTestPhase::Cancelled, "cancelled"},
    {SpeedTestPhase::Failed, "failed"},
}};

/// The outcome of one speed test.
struct SpeedTestResult {
    WallTime timestamp;
    double downloadMbps = 0;
    double uploadMbps = 0;
    /// Idle latency.
    std::optional<double> baselineLatencyMilliseconds;
    std::optional<double> downloadLoadedLatencyMilliseconds;
    std::optional<double> uploadLoadedLatencyMilliseconds;
    /// Loaded to baseline.
    std::optional<double> downloadBufferbloatRatio;
    std::optional<double> uploadBufferbloatRatio;
    std::optional<BufferbloatGrade> downloadBufferbloatGrade;
    std::optional<BufferbloatGrade> uploadBufferbloatGrade;
    bool didSucceed = false;

    bool operator==(const SpeedTestResult&) const = default;
};

} // namespace tolvo
