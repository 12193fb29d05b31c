#pragma once

#include "probes/command_running.h"

#include <optional>
#include <string_view>

namespace tolvo {

// What a run has to say to a parser. Both views last as long as the outcome.

/// The standard output of a run that ended with status 0.
std::optional<std::string_view> outputOfSuccess(const CommandOutcome& outcome);

/// The standard output of a run that came to its end, with whatever status: some tools print what is wanted and still
/// end with a status other than 0.
std::optional<std::string_view> outputOfAnyExit(const CommandOutcome& outcome);

} // namespace tolvo
