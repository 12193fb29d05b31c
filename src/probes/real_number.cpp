#include "probes/real_number.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace tolvo {

std::optional<double> readReal(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace tolvo
