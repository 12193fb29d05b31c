#include "ondemand/bufferbloat.h"

#include <algorithm>
#include <numeric>

namespace tolvo {

BufferbloatGrade bufferbloatGrade(double ratio, const BufferbloatGradeThresholds& thresholds) {
    if (ratio < thresholds.aUpperBoundExclusive)
        return BufferbloatGrade::A;
    if (ratio < thresholds.bUpperBoundExclusive)
        return BufferbloatGrade::B;
    if (ratio < thresholds.cUpperBoundExclusive)
        return BufferbloatGrade::C;
    return BufferbloatGrade::F;
}

std::optional<double> bufferbloatRatio(std::optional<double> loaded, std::optional<double> baseline) {
    if (!loaded || !baseline || *loaded <= 0 || *baseline <= 0)
        return std::nullopt;
    return *loaded / *baseline;
}

std::optional<double> median(std::vector<double> samples) {
    if (samples.empty())
        return std::nullopt;
    std::ranges::sort(samples);
    const std::size_t middle = samples.size() / 2;
    return samples.size() % 2 == 1 ? samples[middle] : (samples[middle - 1] + samples[middle]) / 2;
}

std::optional<double> mean(const std::vector<double>& samples) {
    if (samples.empty())
        return std::nullopt;
    return std::accumulate(samples.begin(), samples.end(), 0.0) / static_cast<double>(samples.size());
}

} // namespace tolvo
