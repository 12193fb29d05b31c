#pragma once

#include "export/diagnostics_export_report.h"
#include "export/json_value.h"

#include <expected>
#include <string>

namespace tolvo {

/// The report as the text that a user copies or saves. Fails as encodeJSON does.
std::expected<std::string, JSONEncodingError> jsonString(const DiagnosticsExportReport& report);

} // namespace tolvo
