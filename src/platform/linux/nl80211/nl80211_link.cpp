#include "platform/linux/nl80211/nl80211_link.h"

#include "platform/linux/nl80211/channel_of_frequency.h"

#include <linux/nl80211.h>

#include <cerrno>
#include <tuple>

namespace tolvo {

namespace {

/// Before the first frame of a new link there is no level; a weak one is the smaller lie for a moment than a strong
/// one.
constexpr std::int64_t unknownSignalDbm = -100;

std::expected<std::vector<StationInterface>, int> stationInterfaces(Nl80211Querying& kernel) {
    std::vector<StationInterface> interfaces;
    const auto listed = kernel.list(NL80211_CMD_GET_INTERFACE, std::nullopt, [&](NetlinkAttributes reply) {
        if (auto interface = parseStationInterface(reply))
            interfaces.push_back(std::move(*interface));
    });
    if (!listed)
        return std::unexpected(listed.error());
    return interfaces;
}

std::expected<std::optional<StationReading>, int> accessPointOf(Nl80211Querying& kernel, std::uint32_t index) {
    std::optional<StationReading> accessPoint;
    const auto listed = kernel.list(NL80211_CMD_GET_STATION, index, [&](NetlinkAttributes reply) {
        auto station = parseStation(reply);
        if (station && station->isAssociated && !accessPoint)
            accessPoint = std::move(*station);
    });
    // An interface that is down, or can't tell, is attached to nothing that could be shown.
    if (!listed && listed.error() != ENETDOWN && listed.error() != EOPNOTSUPP)
        return std::unexpected(listed.error());
    return accessPoint;
}

std::int64_t noiseMeasurement(Nl80211Querying& kernel, std::uint32_t index, std::uint32_t frequencyMHz) {
    std::vector<SurveyEntry> survey;
    // Many drivers have no survey; what came before a failure counts.
    std::ignore = kernel.list(NL80211_CMD_GET_SURVEY, index, [&](NetlinkAttributes reply) {
        if (const auto entry = parseSurvey(reply))
            survey.push_back(*entry);
    });
    return noiseAtFrequency(survey, frequencyMHz).value_or(thermalNoiseFloorDbm);
}

std::optional<BSSEntry> associatedBSS(Nl80211Querying& kernel, std::uint32_t index) {
    std::optional<BSSEntry> associated;
    std::ignore = kernel.list(NL80211_CMD_GET_SCAN, index, [&](NetlinkAttributes reply) {
        auto entry = parseBSS(reply);
        if (entry && entry->isAssociated && !associated)
            associated = std::move(*entry);
    });
    return associated;
}

void addAccessPoint(WiFiLink& link, Nl80211Querying& kernel, const StationInterface& interface,
                    const StationReading& accessPoint) {
    link.ssid = interface.ssid;
    link.bssid = accessPoint.address;
    link.rssiValue = accessPoint.signalDbm.value_or(unknownSignalDbm);
    link.transmitRate = accessPoint.transmitRate.value_or(0);
    link.noiseMeasurement = thermalNoiseFloorDbm;
    std::optional<std::uint32_t> frequency = interface.frequencyMHz;
    if (!frequency) {
        // A link of several channels at once has no frequency of its own; its first access point stands for it.
        if (const auto bss = associatedBSS(kernel, interface.index)) {
            link.bssid = bss->bssid;
            frequency = bss->frequencyMHz;
        }
    }
    if (!frequency)
        return;
    link.channel = channelOfFrequency(*frequency);
    link.noiseMeasurement = noiseMeasurement(kernel, interface.index, *frequency);
}

} // namespace

std::expected<std::optional<DefaultWiFiInterface>, int> findDefaultInterface(Nl80211Querying& kernel) {
    const auto interfaces = stationInterfaces(kernel);
    if (!interfaces)
        return std::unexpected(interfaces.error());
    for (const StationInterface& interface : *interfaces) {
        const auto accessPoint = accessPointOf(kernel, interface.index);
        if (!accessPoint)
            return std::unexpected(accessPoint.error());
        if (*accessPoint)
            return DefaultWiFiInterface{interface, *accessPoint};
    }
    if (interfaces->empty())
        return std::nullopt;
    return DefaultWiFiInterface{interfaces->front(), std::nullopt};
}

std::expected<std::optional<WiFiLink>, int> readLink(Nl80211Querying& kernel) {
    const auto found = findDefaultInterface(kernel);
    if (!found)
        return std::unexpected(found.error());
    if (!*found)
        return std::nullopt;
    WiFiLink link;
    link.interfaceName = (*found)->interface.name;
    if ((*found)->accessPoint)
        addAccessPoint(link, kernel, (*found)->interface, *(*found)->accessPoint);
    return link;
}

std::optional<std::int64_t> noiseAtFrequency(const std::vector<SurveyEntry>& survey, std::uint32_t frequencyMHz) {
    std::optional<std::int64_t> noise;
    for (const SurveyEntry& entry : survey) {
        if (entry.frequencyMHz != frequencyMHz || !entry.noiseDbm)
            continue;
        if (entry.isInUse)
            return entry.noiseDbm;
        noise = entry.noiseDbm;
    }
    return noise;
}

} // namespace tolvo
