#pragma once

#include "core/model/wifi_snapshot.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tolvo {

/// How good this spot is, 0 to 100: signal counts for 40, ratio for 35, noise for 15, link rate for 10. 0 without a
/// snapshot.
std::int64_t radarQualityScore(const std::optional<WiFiSnapshot>& snapshot);

/// The advice for a score.
std::string_view radarCoverageMessage(std::int64_t score);

/// Whether the latest scores (oldest first; the last eight count) fall.
bool radarShouldGoBack(std::span<const std::int64_t> scores);

} // namespace tolvo
