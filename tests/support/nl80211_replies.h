#pragma once

#include "tests/support/netlink_builder.h"

#include <linux/nl80211.h>

#include <optional>

namespace tolvo::testing {

// Replies as the kernel sends them, with what a test wants to differ.

inline constexpr std::string_view accessPointAddress("\x02\0\0\0\x01\0", 6);

inline NetlinkBuilder interfaceReply(std::uint32_t index, std::string_view name,
                                     std::optional<std::uint32_t> frequency) {
    NetlinkBuilder reply;
    reply.put(NL80211_ATTR_WIPHY, std::uint32_t{7}).put(NL80211_ATTR_IFINDEX, index).put(NL80211_ATTR_IFNAME, name);
    reply.put(NL80211_ATTR_IFTYPE, std::uint32_t{NL80211_IFTYPE_STATION}).put(NL80211_ATTR_SSID, "Caf\xC3\xA9");
    if (frequency)
        reply.put(NL80211_ATTR_WIPHY_FREQ, *frequency);
    return reply;
}

inline NetlinkBuilder stationReply(const NetlinkBuilder& information) {
    return NetlinkBuilder().put(NL80211_ATTR_MAC, accessPointAddress).put(NL80211_ATTR_STA_INFO, information);
}

inline NetlinkBuilder stationFlags(std::uint32_t set) {
    const std::uint32_t update[] = {1U << NL80211_STA_FLAG_ASSOCIATED, set};
    return NetlinkBuilder().put(NL80211_STA_INFO_STA_FLAGS,
                                std::string_view(reinterpret_cast<const char*>(update), sizeof update));
}

inline NetlinkBuilder surveyReply(std::uint32_t frequency, int noise) {
    return NetlinkBuilder().put(NL80211_ATTR_SURVEY_INFO,
                                NetlinkBuilder()
                                    .put(NL80211_SURVEY_INFO_FREQUENCY, frequency)
                                    .put(NL80211_SURVEY_INFO_NOISE, static_cast<std::int8_t>(noise)));
}

inline NetlinkBuilder bssReply(std::string_view name, std::uint32_t ageMilliseconds, const NetlinkBuilder& more = {}) {
    const std::string elements = std::string{'\0', static_cast<char>(name.size())} + std::string(name) + "\x03\x01\x06";
    NetlinkBuilder bss = more;
    bss.put(NL80211_BSS_BSSID, accessPointAddress).put(NL80211_BSS_FREQUENCY, std::uint32_t{2437});
    bss.put(NL80211_BSS_SIGNAL_MBM, std::int32_t{-4850}).put(NL80211_BSS_INFORMATION_ELEMENTS, elements);
    bss.put(NL80211_BSS_SEEN_MS_AGO, ageMilliseconds);
    return NetlinkBuilder().put(NL80211_ATTR_BSS, bss);
}

} // namespace tolvo::testing
