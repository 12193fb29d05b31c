#include "presentation/connection_overlay/connection_overlay_content.h"

#include "presentation/rows/value_format.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>

namespace tolvo {

namespace {

constexpr double domainWithoutSamples = 1000;
constexpr double smallestDomain = 20;
/// Room above the largest sample.
constexpr double headroom = 1.2;

struct RowKind {
    std::string_view title;
    std::int64_t (*count)(const TCPConnectionStateCounts&);
    Tone strokeColor;
};

constexpr RowKind rowKinds[] = {
    {"Established", [](const TCPConnectionStateCounts& counts) { return counts.established; }, Tone::Green},
    {"TIME_WAIT", [](const TCPConnectionStateCounts& counts) { return counts.timeWait; }, Tone::Orange},
    {"CLOSE_WAIT", [](const TCPConnectionStateCounts& counts) { return counts.closeWait; }, Tone::Red},
    {"Total", [](const TCPConnectionStateCounts& counts) { return counts.totalCount(); }, Tone::White},
    {"Orphaned", [](const TCPConnectionStateCounts& counts) { return counts.orphanedCount(); }, Tone::Yellow},
};

/// The range that all rows share. The total is the largest of the counts.
ValueRange sharedDomain(std::span<const ConnectionPressureResult> history) {
    if (history.empty())
        return {0, domainWithoutSamples};
    double largest = 0;
    for (const ConnectionPressureResult& result : history)
        largest = std::max(largest, static_cast<double>(result.counts.totalCount()));
    return {0, std::max(smallestDomain, std::ceil(largest * headroom))};
}

std::vector<double> samplesOf(std::span<const ConnectionPressureResult> history, const RowKind& kind) {
    std::vector<double> samples;
    samples.reserve(history.size());
    for (const ConnectionPressureResult& result : history)
        samples.push_back(static_cast<double>(kind.count(result.counts)));
    return samples;
}

std::string statusText(const std::optional<ConnectionPressureResult>& latestResult,
                       const std::optional<std::string>& lastErrorMessage) {
    if (lastErrorMessage)
        return *lastErrorMessage;
    if (latestResult)
        return "Connection pressure is currently " + std::string(rawValue(latestResult->quality)) + ".";
    return "Collecting TCP connection state counts from netstat.";
}

} // namespace

ConnectionOverlayContent connectionOverlayContent(const std::optional<ConnectionPressureResult>& latestResult,
                                                  std::span<const ConnectionPressureResult> history,
                                                  const std::optional<std::string>& lastErrorMessage) {
    ConnectionOverlayContent content;
    content.statusText = statusText(latestResult, lastErrorMessage);
    if (latestResult)
        content.quality = signalQualityBadge(latestResult->quality);
    const ValueRange domain = sharedDomain(history);
    for (const RowKind& kind : rowKinds) {
        content.rows.push_back(
            {std::string(kind.title),
             latestResult ? std::to_string(kind.count(latestResult->counts)) : std::string(absentValueText),
             samplesOf(history, kind), domain, kind.strokeColor});
    }
    return content;
}

} // namespace tolvo
