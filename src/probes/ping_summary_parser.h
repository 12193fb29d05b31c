#pragma once

#include "platform/services/regular_expression.h"
#include "probes/command_parsing_error.h"
#include "probes/ping_probe_running.h"

#include <expected>
#include <memory>
#include <string_view>

namespace tolvo {

/// The round trips of one run of ping.
struct PingSummary {
    double minMilliseconds = 0;
    double avgMilliseconds = 0;
    double maxMilliseconds = 0;
    double stddevMilliseconds = 0;

    bool operator==(const PingSummary&) const = default;
};

/// Reads the statistics at the end of what ping prints, in the words of its BSD and its Linux family.
class PingSummaryParser {
public:
    explicit PingSummaryParser(const RegularExpressionCompiling& compiler);

    /// 0 to 100; 100 when none was printed.
    double packetLossPercent(std::string_view output) const;
    std::expected<PingSummary, CommandParsingError> summary(std::string_view output) const;
    /// Both of them: the loss stands also where the summary is missing or unreadable.
    PingProbeMeasurement measurement(std::string_view output) const;

private:
    std::unique_ptr<RegularExpression> packetLoss_;
    std::unique_ptr<RegularExpression> roundTrips_;
};

} // namespace tolvo
