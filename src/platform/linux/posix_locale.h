#pragma once

#include "core/model/wall_time.h"
#include "platform/services/number_format.h"

#include <string>

namespace tolvo {

// The user's locale, once main has called setlocale(LC_ALL, ""). Main thread only.

NumberFormat localeNumberFormat();
bool isUTF8Locale();
/// Hours and minutes, in the user's time zone.
std::string localeShortTime(WallTime time);
/// Date and time of day, in the user's time zone.
std::string localeDateTime(WallTime time);

} // namespace tolvo
