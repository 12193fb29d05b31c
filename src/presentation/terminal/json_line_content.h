#pragma once

#include "presentation/dashboard/dashboard_sources.h"

#include <string>

namespace tolvo {

/// One line of JSON, without the newline, with what the monitors know at this moment. Keys are the model's field names;
/// a key stands once its monitor has a value. Bytes of names that are not UTF-8 are replaced, so that a line always
/// comes. `isAirSimulated` is added when the readings are made up.
std::string jsonLine(const DashboardSources& sources, WallTime now, bool isAirSimulated);

} // namespace tolvo
