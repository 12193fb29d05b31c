#include "probes/dig_query_time_parser.h"

#include "probes/real_number.h"

namespace tolvo {

namespace {

constexpr const char* command = "/usr/bin/dig";

} // namespace

DigQueryTimeParser::DigQueryTimeParser(const RegularExpressionCompiling& compiler)
    : queryTime_(compiler.compile(R"((?m)Query time:\s*([0-9]+)\s*msec)")) {}

std::expected<double, CommandParsingError> DigQueryTimeParser::queryTime(std::string_view output) const {
    const auto groups = queryTime_->firstMatch(output);
    if (!groups || groups->empty())
        return std::unexpected(commandParsingError::MissingPattern{command, "Query time: <value> msec"});
    const auto milliseconds = readReal(groups->front());
    if (!milliseconds)
        return std::unexpected(commandParsingError::InvalidNumber{command, "queryTime", groups->front()});
    return *milliseconds;
}

} // namespace tolvo
