#include "presentation/terminal/monitor_screen_content.h"

#include "presentation/terminal/terminal_text.h"

#include <algorithm>
#include <iterator>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

TerminalLine headerLine(const DashboardContent& content, const DashboardSources& sources,
                        const MonitorScreenExtras& extras, std::size_t columns) {
    TerminalLine line{{" Tolvo  ", Tone::Primary, true}, {content.health.text, content.health.tone, true}};
    if (extras.isAirSimulated)
        line.push_back({"  Simulated air", Tone::Yellow, true});
    if (content.isMonitoringEnabled)
        line.push_back({"  " + sources.statusMessage(), Tone::Secondary});
    return clippedLine(std::move(line), columns);
}

TerminalLine networkLine(const DashboardContent& content, const DashboardSources& sources, std::size_t columns) {
    const Tone tone = content.network.isConnected ? Tone::Green : Tone::Gray;
    TerminalLine line{{" " + terminalSafe(content.network.name), tone, true}};
    if (content.network.isConnected)
        line.push_back({"  " + content.network.channelLine, Tone::Secondary});
    if (const auto& snapshot = sources.latestSnapshot.value(); snapshot && snapshot->isVPNActive)
        line.push_back({"  VPN", Tone::Green});
    return clippedLine(std::move(line), columns);
}

TerminalLine connectionLine(const DashboardSources& sources, std::size_t columns) {
    const auto& result = sources.connectionResult.value();
    const auto& error = sources.connectionErrorMessage.value();
    if (error)
        return titleAndValueLine({"Connections", *error}, columns, Tone::Orange);
    if (!result)
        return titleAndValueLine({"Connections", std::string(absentValueText)}, columns);
    const TCPConnectionStateCounts& counts = result->counts;
    const Badge badge = signalQualityBadge(sources.connectionQuality.value());
    TerminalLine line = titleAndValueLine({"Connections", ""}, columns);
    line.push_back({badge.text, badge.tone});
    line.push_back({"  " + std::to_string(counts.established) + " established, " + std::to_string(counts.timeWait) +
                    " time-wait, " + std::to_string(counts.closeWait) + " close-wait"});
    return clippedLine(std::move(line), columns);
}

Lines networkGroup(const DashboardContent& content, const DashboardSources& sources, std::size_t columns,
                   TerminalGlyphs glyphs) {
    Lines lines{networkLine(content, sources, columns)};
    for (const MetricTrendRow& row : content.networkRows)
        lines.push_back(trendLine(row, columns, glyphs));
    return lines;
}

Lines latencyGroup(const DashboardContent& content, const DashboardSources& sources, std::size_t columns,
                   TerminalGlyphs glyphs) {
    const auto& address = sources.routerIPAddress.value();
    Lines lines{titleAndValueLine({"Router", address.value_or(std::string(absentValueText))}, columns)};
    for (const MetricTrendRow& row : content.latencyRows)
        lines.push_back(trendLine(row, columns, glyphs));
    lines.push_back(titleAndValueLine(content.packetLossRow, columns));
    return lines;
}

Lines serviceGroup(const DashboardContent& content, const DashboardSources& sources, std::size_t columns,
                   TerminalGlyphs glyphs) {
    return {titleAndValueLine({"DNS domain", content.dnsDomainRow.value}, columns),
            trendLine({"DNS lookup", content.dnsLookupRow.value, content.dnsLookupRow.samples,
                       content.dnsLookupRow.yDomain, content.dnsLookupRow.strokeColor},
                      columns, glyphs),
            connectionLine(sources, columns)};
}

std::string keys(const DashboardSources& sources, const MonitorScreenExtras& extras, std::size_t columns) {
    const std::string monitoring = sources.isMonitoringEnabled.value() ? "on" : "off";
    const std::string battery = extras.isBatteryFriendly ? "on" : "off";
    std::string text = "m monitoring " + monitoring + "  b battery-friendly " + battery +
                       "  s speed  c channels  r radar  e report  q quit";
    if (columnCount(text) < columns)
        return text;
    return "m mon " + monitoring + "  b bat " + battery + "  s speed c scan r radar e report q quit";
}

/// One blank line between groups, as long as all lines fit with them.
Lines joinGroups(std::vector<Lines> groups, std::size_t rows) {
    std::size_t total = 0;
    for (const Lines& group : groups)
        total += group.size();
    Lines joined;
    for (Lines& group : groups) {
        if (!joined.empty() && !group.empty() && total + 1 <= rows) {
            joined.emplace_back();
            ++total;
        }
        std::ranges::move(group, std::back_inserter(joined));
    }
    return joined;
}

} // namespace

Lines monitorScreen(const DashboardSources& sources, const MonitorScreenExtras& extras, TerminalSize size,
                    TerminalGlyphs glyphs, const NumberFormat& format) {
    const DashboardContent content = dashboardContent(sources, format);
    const std::size_t columns = size.columns;
    Lines top{headerLine(content, sources, extras, columns)};
    for (const InlineMessageRow& message : content.messages)
        std::ranges::move(wrappedLines(terminalSafe(message.text), message.accentColor, columns),
                          std::back_inserter(top));
    const std::size_t rows = size.rows > 0 ? size.rows - 1 : 0;
    Lines lines =
        joinGroups({std::move(top), networkGroup(content, sources, columns, glyphs),
                    latencyGroup(content, sources, columns, glyphs), serviceGroup(content, sources, columns, glyphs)},
                   rows);
    return withKeyLine(std::move(lines), keys(sources, extras, columns), size);
}

} // namespace tolvo
