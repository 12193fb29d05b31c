#include "platform/linux/nl80211/nl80211_readings.h"

#include "platform/linux/nl80211/ssid_text.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <cmath>

namespace tolvo {

namespace {

/// Radio levels lie far inside this; drivers that have no level report 0, positive numbers or the type's lowest.
constexpr std::int64_t lowestLevelDbm = -120;

/// A network whose level the driver doesn't tell counts as barely heard.
constexpr std::int64_t barelyHeardDbm = -100;

std::optional<std::int64_t> level(std::optional<std::int8_t> dbm) {
    if (!dbm || *dbm >= 0 || *dbm < lowestLevelDbm)
        return std::nullopt;
    return *dbm;
}

std::optional<std::string> hardwareAddress(std::optional<Bytes> bytes) {
    constexpr std::size_t addressLength = 6;
    constexpr std::string_view digits = "0123456789abcdef";
    if (!bytes || bytes->size() != addressLength)
        return std::nullopt;
    std::string text;
    for (const std::byte byte : *bytes) {
        const auto value = std::to_integer<std::size_t>(byte);
        if (!text.empty())
            text += ':';
        text += digits[value >> 4];
        text += digits[value & 15];
    }
    return text;
}

/// An interface name ends at its zero.
std::string nameText(Bytes bytes) {
    const auto end = std::ranges::find(bytes, std::byte{0});
    return ssidText(bytes.first(static_cast<std::size_t>(end - bytes.begin())));
}

/// The kernel works the rate out for every generation, in units of 100 kbit/s. The 16-bit field is older and leaves
/// out what doesn't fit.
std::optional<double> bitRate(NetlinkAttributes rate) {
    constexpr double unitsPerMbps = 10;
    if (const auto wide = rate.integer<std::uint32_t>(NL80211_RATE_INFO_BITRATE32))
        return *wide / unitsPerMbps;
    if (const auto narrow = rate.integer<std::uint16_t>(NL80211_RATE_INFO_BITRATE))
        return *narrow / unitsPerMbps;
    return std::nullopt;
}

/// A driver that gives no flags lists the access point only while it is associated.
bool isAssociated(NetlinkAttributes station) {
    const auto flags = station.find(NL80211_STA_INFO_STA_FLAGS);
    nl80211_sta_flag_update update{};
    if (!flags || flags->size() != sizeof update)
        return true;
    std::memcpy(&update, flags->data(), sizeof update);
    constexpr std::uint32_t associated = 1U << NL80211_STA_FLAG_ASSOCIATED;
    return (update.mask & associated) == 0 || (update.set & associated) != 0;
}

/// In dBm; a driver without that unit gives 0 to 100 for nothing to full, spread here over the usual range.
std::int64_t bssSignal(NetlinkAttributes bss) {
    constexpr double unitsPerDbm = 100;
    if (const auto hundredths = bss.integer<std::int32_t>(NL80211_BSS_SIGNAL_MBM)) {
        return std::clamp<std::int64_t>(std::llround(*hundredths / unitsPerDbm), lowestLevelDbm, 0);
    }
    if (const auto percent = bss.integer<std::uint8_t>(NL80211_BSS_SIGNAL_UNSPEC))
        return barelyHeardDbm + std::min<std::int64_t>(*percent, 100) / 2;
    return barelyHeardDbm;
}

bool isAssociatedStatus(std::optional<std::uint32_t> status) {
    return status && (*status == NL80211_BSS_STATUS_ASSOCIATED || *status == NL80211_BSS_STATUS_IBSS_JOINED);
}

} // namespace

std::optional<StationInterface> parseStationInterface(NetlinkAttributes reply) {
    const auto wiphy = reply.integer<std::uint32_t>(NL80211_ATTR_WIPHY);
    const auto index = reply.integer<std::uint32_t>(NL80211_ATTR_IFINDEX);
    const auto name = reply.find(NL80211_ATTR_IFNAME);
    if (!wiphy || !index || !name)
        return std::nullopt;
    if (reply.integer<std::uint32_t>(NL80211_ATTR_IFTYPE) != NL80211_IFTYPE_STATION)
        return std::nullopt;
    StationInterface interface{*wiphy, *index, nameText(*name), std::nullopt, std::nullopt};
    if (const auto ssid = reply.find(NL80211_ATTR_SSID); ssid && !ssid->empty())
        interface.ssid = ssidText(*ssid);
    interface.frequencyMHz = reply.integer<std::uint32_t>(NL80211_ATTR_WIPHY_FREQ);
    return interface;
}

std::optional<StationReading> parseStation(NetlinkAttributes reply) {
    const auto address = hardwareAddress(reply.find(NL80211_ATTR_MAC));
    if (!address)
        return std::nullopt;
    const NetlinkAttributes station = reply.nested(NL80211_ATTR_STA_INFO);
    StationReading reading{*address, isAssociated(station), std::nullopt, std::nullopt};
    // The level of the last frame, which follows a walk through the house; the average lags a second behind it.
    reading.signalDbm = level(station.integer<std::int8_t>(NL80211_STA_INFO_SIGNAL));
    if (!reading.signalDbm)
        reading.signalDbm = level(station.integer<std::int8_t>(NL80211_STA_INFO_SIGNAL_AVG));
    reading.transmitRate = bitRate(station.nested(NL80211_STA_INFO_TX_BITRATE));
    return reading;
}

std::optional<SurveyEntry> parseSurvey(NetlinkAttributes reply) {
    const NetlinkAttributes survey = reply.nested(NL80211_ATTR_SURVEY_INFO);
    const auto frequency = survey.integer<std::uint32_t>(NL80211_SURVEY_INFO_FREQUENCY);
    if (!frequency)
        return std::nullopt;
    return SurveyEntry{*frequency, survey.has(NL80211_SURVEY_INFO_IN_USE),
                       level(survey.integer<std::int8_t>(NL80211_SURVEY_INFO_NOISE))};
}

std::optional<BSSEntry> parseBSS(NetlinkAttributes reply) {
    const NetlinkAttributes bss = reply.nested(NL80211_ATTR_BSS);
    const auto bssid = hardwareAddress(bss.find(NL80211_BSS_BSSID));
    const auto frequency = bss.integer<std::uint32_t>(NL80211_BSS_FREQUENCY);
    if (!bssid || !frequency)
        return std::nullopt;
    const auto elements = bss.find(NL80211_BSS_INFORMATION_ELEMENTS);
    BSSEntry entry{.bssid = *bssid,
                   .frequencyMHz = *frequency,
                   .signalDbm = bssSignal(bss),
                   .ssid = ssidOfInformationElements(elements.value_or(Bytes())),
                   .isAssociated = isAssociatedStatus(bss.integer<std::uint32_t>(NL80211_BSS_STATUS)),
                   .lastSeenSinceBoot = std::nullopt,
                   .age = std::nullopt};
    if (const auto seen = bss.integer<std::uint64_t>(NL80211_BSS_LAST_SEEN_BOOTTIME))
        entry.lastSeenSinceBoot = std::chrono::nanoseconds(static_cast<std::int64_t>(*seen));
    if (const auto age = bss.integer<std::uint32_t>(NL80211_BSS_SEEN_MS_AGO))
        entry.age = std::chrono::milliseconds(*age);
    return entry;
}

std::optional<std::uint32_t> parseWiphy(NetlinkAttributes message) {
    return message.integer<std::uint32_t>(NL80211_ATTR_WIPHY);
}

} // namespace tolvo
