#pragma once

#include "platform/services/regular_expression.h"
#include "probes/command_parsing_error.h"

#include <expected>
#include <memory>
#include <string_view>

namespace tolvo {

/// Reads the query time from the footer of dig's output.
class DigQueryTimeParser {
public:
    explicit DigQueryTimeParser(const RegularExpressionCompiling& compiler);

    /// In milliseconds.
    std::expected<double, CommandParsingError> queryTime(std::string_view output) const;

private:
    std::unique_ptr<RegularExpression> queryTime_;
};

} // namespace tolvo
