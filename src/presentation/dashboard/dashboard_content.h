#pragma once

#include "presentation/dashboard/dashboard_sources.h"
#include "presentation/rows/metric_rows.h"
#include "presentation/rows/value_format.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tolvo {

/// The network's name with what is known of its channel.
struct WiFiNetworkHeader {
    std::string name;
    bool isConnected = false;
    /// The band's label.
    std::optional<std::string> band;
    std::string channelLine;

    bool operator==(const WiFiNetworkHeader&) const = default;
};

/// All that the dashboard says at one moment.
struct DashboardContent {
    Badge health;
    bool isMonitoringEnabled = false;
    /// Beside the monitoring switch.
    std::string monitoringLabel;
    std::vector<InlineMessageRow> messages;
    WiFiNetworkHeader network;
    std::vector<MetricTrendRow> networkRows;
    std::vector<MetricTrendRow> latencyRows;
    MetricRow packetLossRow;
    MetricRow dnsDomainRow;
    MetricTrendRow dnsLookupRow;

    bool operator==(const DashboardContent&) const = default;
};

DashboardContent dashboardContent(const DashboardSources& sources, const NumberFormat& format);

/// The range of the link rate's trend line: at least 80 wide around the samples, within 0 to 1200 Mbit/s.
ValueRange linkRateDomain(std::span<const double> samples);

} // namespace tolvo
