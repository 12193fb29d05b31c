#pragma once

#include "platform/linux/nl80211/netlink_attributes.h"

#include <linux/netlink.h>
#include <linux/nl80211.h>

#include <string>
#include <string_view>
#include <vector>

namespace tolvo::testing {

/// The attributes of a netlink message, built in memory.
class NetlinkBuilder {
public:
    NetlinkBuilder& put(int type, std::string_view payload) {
        const nlattr header{static_cast<std::uint16_t>(NLA_HDRLEN + payload.size()), static_cast<std::uint16_t>(type)};
        for (const Bytes part : {std::as_bytes(std::span(&header, 1)), std::as_bytes(std::span(payload))})
            bytes.insert(bytes.end(), part.begin(), part.end());
        bytes.resize(NLA_ALIGN(bytes.size()));
        return *this;
    }
    template<class Number>
    NetlinkBuilder& number(int type, long value) {
        const auto number = static_cast<Number>(value);
        return put(type, std::string_view(reinterpret_cast<const char*>(&number), sizeof number));
    }
    NetlinkBuilder& nest(int type, const NetlinkBuilder& inner) {
        return put(type, std::string_view(reinterpret_cast<const char*>(inner.bytes.data()), inner.bytes.size()));
    }

    std::vector<std::byte> bytes;
};

// Replies as the kernel sends them, with what a test wants to differ.

inline NetlinkBuilder interfaceReply(std::uint32_t index, std::string_view name, std::uint32_t frequency) {
    NetlinkBuilder reply;
    reply.number<std::uint32_t>(NL80211_ATTR_WIPHY, 7).number<std::uint32_t>(NL80211_ATTR_IFINDEX, index);
    reply.put(NL80211_ATTR_IFNAME, name).number<std::uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION);
    reply.put(NL80211_ATTR_SSID, "Caf\xC3\xA9");
    return frequency == 0 ? reply : reply.number<std::uint32_t>(NL80211_ATTR_WIPHY_FREQ, frequency);
}

inline NetlinkBuilder stationReply(std::uint32_t flags, NetlinkBuilder information = {}) {
    const nl80211_sta_flag_update update{1U << NL80211_STA_FLAG_ASSOCIATED, flags};
    information.put(NL80211_STA_INFO_STA_FLAGS, {reinterpret_cast<const char*>(&update), sizeof update});
    return NetlinkBuilder().put(NL80211_ATTR_MAC, {"\2\0\0\0\1\0", 6}).nest(NL80211_ATTR_STA_INFO, information);
}

inline NetlinkBuilder surveyReply(std::uint32_t frequency, int noise, NetlinkBuilder survey = {}) {
    survey.number<std::uint32_t>(NL80211_SURVEY_INFO_FREQUENCY, frequency);
    return NetlinkBuilder().nest(NL80211_ATTR_SURVEY_INFO,
                                 survey.number<std::int8_t>(NL80211_SURVEY_INFO_NOISE, noise));
}

inline NetlinkBuilder bssReply(std::string_view name, std::uint32_t ageMilliseconds, NetlinkBuilder bss = {}) {
    const std::string elements = std::string{'\0', static_cast<char>(name.size())} + std::string(name) + "\3\1\6";
    bss.put(NL80211_BSS_BSSID, {"\2\0\0\0\1\0", 6}).number<std::uint32_t>(NL80211_BSS_FREQUENCY, 2437);
    bss.number<std::int32_t>(NL80211_BSS_SIGNAL_MBM, -4850).put(NL80211_BSS_INFORMATION_ELEMENTS, elements);
    return NetlinkBuilder().nest(NL80211_ATTR_BSS, bss.number<std::uint32_t>(NL80211_BSS_SEEN_MS_AGO, ageMilliseconds));
}

inline NetlinkBuilder associatedBSSReply(std::string_view name) {
    return bssReply(name, 0, NetlinkBuilder().number<std::uint32_t>(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED));
}

} // namespace tolvo::testing
