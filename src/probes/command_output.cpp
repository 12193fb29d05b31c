#include "probes/command_output.h"

namespace tolvo {

std::optional<std::string_view> outputOfSuccess(const CommandOutcome& outcome) {
    if (!outcome)
        return std::nullopt;
    return outcome->standardOutput;
}

std::optional<std::string_view> outputOfAnyExit(const CommandOutcome& outcome) {
    if (outcome)
        return outcome->standardOutput;
    if (const auto* nonZeroExit = std::get_if<commandRunnerError::NonZeroExit>(&outcome.error()))
        return nonZeroExit->standardOutput;
    return std::nullopt;
}

} // namespace tolvo
