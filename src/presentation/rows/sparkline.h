#pragma once

#include "presentation/rows/metric_rows.h"

#include <optional>
#include <span>
#include <vector>

namespace tolvo {

/// The heights of a trend line's points, each from 0 (bottom) to 1 (top); one sample gives two equal points.
std::vector<double> sparklineHeights(std::span<const double> samples, const std::optional<ValueRange>& yDomain);

struct SparklinePoint {
    double x = 0;
    double y = 0;

    bool operator==(const SparklinePoint&) const = default;
};

/// The same as points in a box of this size, with y growing downwards.
std::vector<SparklinePoint> sparklinePoints(std::span<const double> samples, const std::optional<ValueRange>& yDomain,
                                            double width, double height);

} // namespace tolvo
