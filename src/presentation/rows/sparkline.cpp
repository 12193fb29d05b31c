#include "presentation/rows/sparkline.h"

#include <algorithm>

namespace tolvo {

std::vector<double> sparklineHeights(std::span<const double> samples, const std::optional<ValueRange>& yDomain) {
    std::vector<double> heights(samples.begin(), samples.end());
    if (heights.size() == 1)
        heights.push_back(heights.front());
    if (heights.empty())
        return heights;
    const auto [lowest, highest] = std::ranges::minmax(heights);
    const ValueRange range = yDomain.value_or(ValueRange{lowest, highest});
    for (double& height : heights) {
        height = range.upper > range.lower
                     ? (std::clamp(height, range.lower, range.upper) - range.lower) / (range.upper - range.lower)
                     : 0.5;
    }
    return heights;
}

std::vector<SparklinePoint> sparklinePoints(std::span<const double> samples, const std::optional<ValueRange>& yDomain,
                                            double width, double height) {
    std::vector<SparklinePoint> points;
    const std::vector<double> heights = sparklineHeights(samples, yDomain);
    for (std::size_t i = 0; i < heights.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(heights.size() - 1);
        points.push_back({width * share, height * (1 - heights[i])});
    }
    return points;
}

} // namespace tolvo
