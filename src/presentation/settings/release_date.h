#pragma once

#include "core/model/wall_time.h"

#include <chrono>
#include <optional>
#include <string_view>
#include <variant>

namespace tolvo {

/// A day of the calendar, or a moment whose day depends on where one is.
using ReleaseDate = std::variant<std::chrono::year_month_day, WallTime>;

/// Reads "2026-01-31T10:00:00.250Z", the same without a fraction or with an offset such as "+01:00", and "2026-01-31".
std::optional<ReleaseDate> parseReleaseDate(std::string_view text);

} // namespace tolvo
