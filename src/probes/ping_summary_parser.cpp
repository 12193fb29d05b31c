#include "probes/ping_summary_parser.h"

#include "probes/real_number.h"

#include <array>
#include <utility>

namespace tolvo {

namespace {

constexpr const char* command = "/sbin/ping";

constexpr std::array<std::pair<const char*, double PingSummary::*>, 4> summaryFields{{
    {"min", &PingSummary::minMilliseconds},
    {"avg", &PingSummary::avgMilliseconds},
    {"max", &PingSummary::maxMilliseconds},
    {"stddev", &PingSummary::stddevMilliseconds},
}};

} // namespace

PingSummaryParser::PingSummaryParser(const RegularExpressionCompiling& compiler)
    : packetLoss_(compiler.compile(R"((?m)([0-9]+(?:\.[0-9]+)?)%\s+packet loss)")),
      roundTrips_(compiler.compile(R"((?m)(?:round-trip|rtt)\s+min\/avg\/max\/(?:stddev|mdev)\s*=\s*)"
                                   R"(([0-9.]+)\/([0-9.]+)\/([0-9.]+)\/([0-9.]+)\s+ms)")) {}

double PingSummaryParser::packetLossPercent(std::string_view output) const {
    const auto groups = packetLoss_->firstMatch(output);
    if (!groups || groups->empty())
        return 100;
    return readReal(groups->front()).value_or(100);
}

std::expected<PingSummary, CommandParsingError> PingSummaryParser::summary(std::string_view output) const {
    const auto groups = roundTrips_->firstMatch(output);
    if (!groups || groups->size() != summaryFields.size()) {
        return std::unexpected(commandParsingError::MissingPattern{
            command, "round-trip min/avg/max/stddev = <min>/<avg>/<max>/<stddev> ms"});
    }
    PingSummary summary;
    for (std::size_t i = 0; i < summaryFields.size(); ++i) {
        const auto& [name, field] = summaryFields[i];
        const auto value = readReal((*groups)[i]);
        if (!value)
            return std::unexpected(commandParsingError::InvalidNumber{command, name, (*groups)[i]});
        summary.*field = *value;
    }
    return summary;
}

PingProbeMeasurement PingSummaryParser::measurement(std::string_view output) const {
    PingProbeMeasurement measurement;
    measurement.packetLossPercent = packetLossPercent(output);
    if (const auto roundTrips = summary(output)) {
        measurement.latencyMilliseconds = roundTrips->avgMilliseconds;
        measurement.jitterMilliseconds = roundTrips->stddevMilliseconds;
        measurement.didSucceed = true;
    }
    return measurement;
}

} // namespace tolvo
