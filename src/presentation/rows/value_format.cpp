#include "presentation/rows/value_format.h"

#include <array>
#include <charconv>

namespace tolvo {

std::string formatDecimal(double value, int decimalPlaces, const NumberFormat& format) {
    // The longest double has 309 digits before the point.
    std::array<char, 352> buffer{};
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimalPlaces);
    std::string text(buffer.data(), end.ptr);
    if (const auto point = text.find('.'); point != std::string::npos)
        text.replace(point, 1, format.decimalSeparator);
    return text;
}

std::string formatQuantity(std::optional<double> value, int decimalPlaces, std::string_view unit,
                           const NumberFormat& format) {
    if (!value)
        return std::string(absentValueText);
    return formatDecimal(*value, decimalPlaces, format).append(" ").append(unit);
}

std::string formatQuantity(std::optional<std::int64_t> value, std::string_view unit) {
    if (!value)
        return std::string(absentValueText);
    return std::to_string(*value).append(" ").append(unit);
}

} // namespace tolvo
