#include "presentation/terminal/wifi_radar_page.h"

#include "presentation/terminal/terminal_text.h"

#include <utility>

namespace tolvo {

namespace {

using Lines = std::vector<TerminalLine>;

constexpr std::size_t signalColumns = 10;
constexpr std::size_t channelColumns = 18;

TerminalLine networkLine(const WiFiRadarContent& content, std::size_t columns) {
    TerminalLine line{{" " + terminalSafe(content.networkName), Tone::Primary, true}};
    if (content.hasCurrentTag)
        line.push_back({"  " + std::string(wifi_radar::currentTag), Tone::Green});
    line.push_back({"  " + content.channelLine, Tone::Secondary});
    return clippedLine(std::move(line), columns);
}

TerminalLine nearbyLine(const RadarNearbyNetworkRow& row, std::size_t columns) {
    return clippedLine({{" " + paddedToColumns(row.signal, signalColumns), Tone::Secondary},
                        {paddedToColumns(row.channel, channelColumns), Tone::Secondary},
                        {terminalSafe(row.ssid)}},
                       columns);
}

} // namespace

WiFiRadarPage::WiFiRadarPage(WiFiRadarSources sources, Actions actions, TerminalGlyphs glyphs)
    : sources_(sources),
      actions_(std::move(actions)),
      glyphs_(glyphs),
      subscriptions_(subscribeToAll(sources_, [this] { changed(); })) {}

Lines WiFiRadarPage::lines(TerminalSize size) const {
    const WiFiRadarContent content = wifiRadarContent(sources_);
    Lines lines{clippedLine({{" " + std::string(wifi_radar::title), Tone::Primary, true},
                             {"  " + content.hint, content.scoreColor, true}},
                            size.columns),
                networkLine(content, size.columns),
                {},
                progressLine(static_cast<double>(content.score) / 100, std::to_string(content.score), size.columns,
                             glyphs_, content.scoreColor),
                clippedLine({{" " + content.coverageMessage, content.scoreColor}}, size.columns),
                {}};
    for (const RadarMetricCard& card : content.cards) {
        const std::string value = card.unit ? card.value + " " + *card.unit : card.value;
        lines.push_back(trendLine({card.title, value, card.samples, card.yDomain, card.color}, size.columns, glyphs_));
    }
    lines.emplace_back();
    lines.push_back(clippedLine({{" " + std::string(wifi_radar::nearbyTitle), Tone::Primary, true}}, size.columns));
    for (const RadarNearbyNetworkRow& row : content.nearby)
        lines.push_back(nearbyLine(row, size.columns));
    if (content.nearby.empty())
        lines.push_back(clippedLine({{" " + content.nearbyPlaceholder, Tone::Secondary}}, size.columns));
    return withKeyLine(std::move(lines), "Esc back", size);
}

} // namespace tolvo
