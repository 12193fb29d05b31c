#pragma once

#include "core/model/speed_test_result.h"

#include <optional>
#include <vector>

namespace tolvo {

/// Upper bounds of the ratio of loaded to idle latency.
struct BufferbloatGradeThresholds {
    double aUpperBoundExclusive = 2.0;
    double bUpperBoundExclusive = 3.0;
    double cUpperBoundExclusive = 5.0;

    bool operator==(const BufferbloatGradeThresholds&) const = default;
};

BufferbloatGrade bufferbloatGrade(double ratio, const BufferbloatGradeThresholds& thresholds);

/// Loaded to idle latency; nothing unless both are there and above 0.
std::optional<double> bufferbloatRatio(std::optional<double> loaded, std::optional<double> baseline);

/// The middle one, or the mean of the two middle ones; nothing without samples.
std::optional<double> median(std::vector<double> samples);

std::optional<double> mean(const std::vector<double>& samples);

} // namespace tolvo
