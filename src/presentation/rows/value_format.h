#pragma once

#include "platform/services/number_format.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tolvo {

/// What a panel shows in place of a value that isn't there.
inline constexpr std::string_view absentValueText = "—";

/// The number with a fixed count of decimal places, rounded to the nearest.
std::string formatDecimal(double value, int decimalPlaces, const NumberFormat& format);

/// "12.3 ms": the number, a blank and the unit; the dash alone when absent.
std::string formatQuantity(std::optional<double> value, int decimalPlaces, std::string_view unit,
                           const NumberFormat& format);

/// "-60 dBm": plain digits without grouping, a blank and the unit; the dash alone when absent.
std::string formatQuantity(std::optional<std::int64_t> value, std::string_view unit);

} // namespace tolvo
