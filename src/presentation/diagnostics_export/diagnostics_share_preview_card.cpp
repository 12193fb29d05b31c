#include "presentation/diagnostics_export/diagnostics_share_preview_card.h"

#include "core/text.h"
#include "presentation/rows/value_format.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace tolvo {

namespace {

using Report = DiagnosticsExportReport;

constexpr std::string_view missing = "Unavailable";

Tone capsuleTone(HealthState state) {
    switch (state) {
    case HealthState::Good:
        return Tone::Green;
    case HealthState::Warning:
        return Tone::Yellow;
    case HealthState::Poor:
        return Tone::Orange;
    case HealthState::Disconnected:
        return Tone::Gray;
    }
    std::unreachable();
}

/// A field of a section's data, if both are there.
template<class Data, class Field>
std::optional<Field> fieldOf(const std::optional<Data>& data, std::optional<Field> Data::* field) {
    return data ? (*data).*field : std::nullopt;
}
template<class Data, class Field>
std::optional<Field> fieldOf(const std::optional<Data>& data, Field Data::* field) {
    return data ? std::optional((*data).*field) : std::nullopt;
}

std::string quantity(std::optional<std::int64_t> value, std::string_view unit) {
    return value ? std::to_string(*value).append(unit) : std::string(missing);
}

/// As in the report, with a point in every locale.
std::string milliseconds(std::optional<double> value) {
    return value ? formatDecimal(*value, 1, {}).append(" ms") : std::string(missing);
}

std::string speed(const std::optional<Report::SpeedTestData>& data) {
    if (!data)
        return std::string(missing);
    const auto rounded = [](double mbps) { return formatDecimal(std::round(mbps), 0, {}); };
    return rounded(data->downloadMbps) + " / " + rounded(data->uploadMbps) + " Mbps";
}

} // namespace

DiagnosticsSharePreviewCard diagnosticsSharePreviewCard(const DiagnosticsExportReport& report,
                                                        const DateTimeFormat& formatDateTime) {
    const auto& wifi = report.wifi.data;
    const HealthState health = report.runtime.healthState;
    return {
        .name = "Tolvo",
        .subtitle = "Network Snapshot",
        .healthCapsule = {upperCased(rawValue(health)), capsuleTone(health)},
        .metrics =
            {
                {"SSID", fieldOf(wifi, &Report::WiFiData::ssid).value_or(std::string(missing))},
                {"Signal", quantity(fieldOf(wifi, &Report::WiFiData::rssiDbm), " dBm")},
                {"SNR", quantity(fieldOf(wifi, &Report::WiFiData::snrDb), " dB")},
                {"Internet Ping",
                 milliseconds(fieldOf(report.latency.internetPing.data, &Report::PingMetric::latencyMilliseconds))},
                {"DNS", milliseconds(fieldOf(report.latency.dnsLookup.data, &Report::DNSMetric::latencyMilliseconds))},
                {"Connections",
                 quantity(fieldOf(report.connectionPressure.data, &Report::ConnectionPressureData::totalCount), "")},
                {"Speed", speed(report.speedTest.data)},
            },
        .footer = "Updated " + formatDateTime(report.exportedAt),
    };
}

} // namespace tolvo
