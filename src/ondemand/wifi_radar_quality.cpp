#include "ondemand/wifi_radar_quality.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tolvo {

namespace {

double limited(double share) {
    return std::clamp(share, 0.0, 1.0);
}

double mean(std::span<const std::int64_t> scores) {
    return std::accumulate(scores.begin(), scores.end(), 0.0) / static_cast<double>(scores.size());
}

} // namespace

std::int64_t radarQualityScore(const std::optional<WiFiSnapshot>& snapshot) {
    if (!snapshot)
        return 0;
    const double signal = limited((static_cast<double>(snapshot->rssiDbm) + 90) / 45);
    const double ratio = limited(static_cast<double>(snapshot->snrDb.value_or(0)) / 50);
    const double noise = 1 - limited((static_cast<double>(snapshot->noiseFloorDbm) + 100) / 30);
    const double linkRate = limited(static_cast<double>(snapshot->linkRateMbps.value_or(0)) / 1200);
    const double sum = 0.40 * signal + 0.35 * ratio + 0.15 * noise + 0.10 * linkRate;
    return std::clamp<std::int64_t>(std::llround(sum * 100), 0, 100);
}

std::string_view radarCoverageMessage(std::int64_t score) {
    if (score >= 86)
        return "Great spot: strong signal here.";
    if (score >= 66)
        return "Good spot: signal is stable.";
    if (score >= 46)
        return "Keep moving: signal can improve.";
    return "Weak spot: move closer to the router.";
}

bool radarShouldGoBack(std::span<const std::int64_t> scores) {
    const auto latest = scores.last(std::min<std::size_t>(scores.size(), 8));
    if (latest.size() < 2)
        return false;
    const std::size_t half = latest.size() / 2;
    return mean(latest.first(half)) > mean(latest.subspan(half));
}

} // namespace tolvo
