#pragma once

#include "presentation/rows/tone.h"

#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// A title on the left and a value on the right.
struct MetricRow {
    std::string title;
    std::string value;

    bool operator==(const MetricRow&) const = default;
};

struct ValueRange {
    double lower = 0;
    double upper = 0;

    bool operator==(const ValueRange&) const = default;
};

/// A title, a trend line and a value.
struct MetricTrendRow {
    std::string title;
    std::string value;
    /// Oldest first.
    std::vector<double> samples;
    /// The range that the trend line's height stands for; without it, that of the samples.
    std::optional<ValueRange> yDomain;
    Tone strokeColor = Tone::Primary;

    bool operator==(const MetricTrendRow&) const = default;
};

/// A line of text in a colour.
struct InlineMessageRow {
    std::string text;
    Tone accentColor = Tone::Primary;

    bool operator==(const InlineMessageRow&) const = default;
};

} // namespace tolvo
