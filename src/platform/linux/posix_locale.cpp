#include "platform/linux/posix_locale.h"

#include <clocale>
#include <ctime>
#include <langinfo.h>

#include <array>
#include <string_view>

namespace tolvo {

namespace {

std::string formatted(WallTime time, const char* format) {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
    std::tm local{};
    localtime_r(&seconds, &local);
    std::array<char, 128> text{};
    return {text.data(), std::strftime(text.data(), text.size(), format, &local)};
}

} // namespace

NumberFormat localeNumberFormat() {
    const lconv* conventions = std::localeconv();
    const std::string_view separator = conventions->decimal_point ? conventions->decimal_point : "";
    return {separator.empty() ? "." : std::string(separator)};
}

bool isUTF8Locale() {
    return std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

std::string localeShortTime(WallTime time) {
    // The locale says by its AM/PM format whether it counts twelve hours or twenty-four.
    const bool hasTwelveHours = std::string_view(nl_langinfo(T_FMT_AMPM)) == nl_langinfo(T_FMT);
    return formatted(time, hasTwelveHours ? "%I:%M %p" : "%H:%M");
}

std::string localeDateTime(WallTime time) {
    return formatted(time, "%x %X");
}

} // namespace tolvo
