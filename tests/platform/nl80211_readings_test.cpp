#include "platform/linux/nl80211/channel_of_frequency.h"
#include "platform/linux/nl80211/netlink_messages.h"
#include "platform/linux/nl80211/nl80211_readings.h"
#include "platform/linux/nl80211/ssid_text.h"
#include "tests/support/nl80211_replies.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace tolvo::testing {
namespace {

using namespace std::string_literals;

Bytes bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

TEST(ChannelOfFrequency, FollowsTheNumberingOfEachBand) {
    using enum WiFiChannelBand;
    const std::pair<std::uint32_t, WiFiChannel> cases[] = {
        {2412, {1, TwoGigahertz}}, {2472, {13, TwoGigahertz}},  {2484, {14, TwoGigahertz}},   {2477, {0, Unknown}},
        {4920, {184, Unknown}},    {5180, {36, FiveGigahertz}}, {5885, {177, FiveGigahertz}}, {5935, {2, SixGigahertz}},
        {5955, {1, SixGigahertz}}, {7115, {233, SixGigahertz}}, {7120, {0, Unknown}},         {58320, {1, Unknown}},
        {4294967295, {0, Unknown}}};
    for (const auto& [frequency, channel] : cases)
        EXPECT_EQ(channelOfFrequency(frequency), channel) << frequency;
}

TEST(SSIDText, KeepsTextEscapesTheRestAndIsFoundWhereverTheElementsAreCut) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {{"\1\2\x82\x84\0\4Home"s, "Home"},
                                                                        {"\0\x0A"
                                                                         "Caf\xC3\xA9 \xF0\x9F\x93\xB6"s,
                                                                         "Caf\xC3\xA9 \xF0\x9F\x93\xB6"},
                                                                        {"\0\4Caf\xE9"s, "Caf\\xe9"},
                                                                        {"\0\4\xED\xA0\x80!"s, "\\xed\\xa0\\x80!"},
                                                                        {"\0\3a\0b"s, "a\0b"s},
                                                                        {"\0\0\1\1\x82"s, {}},
                                                                        {"\0\3\0\0\0"s, {}},
                                                                        {"\0\5Home"s, {}},
                                                                        {"\0"s, {}},
                                                                        {"\1\xFF\0\4Home"s, {}},
                                                                        {"\0\x21"s + std::string(33, 'x'), {}}};
    for (const auto& [elements, name] : cases)
        EXPECT_EQ(ssidOfInformationElements(bytesOf(elements)), name);
    EXPECT_EQ(ssidText(bytesOf(std::string(32, '\xFF'))).size(), 32u * 4) << "never cut";
}

TEST(Nl80211Readings, TakeTheRateAndTheLevelThatAreThere) {
    using Builder = NetlinkBuilder;
    const auto rate = [](const Builder& fields) { return Builder().nest(NL80211_STA_INFO_TX_BITRATE, fields); };
    const auto levels = [](long last, long average) {
        return Builder()
            .number<std::int8_t>(NL80211_STA_INFO_SIGNAL, last)
            .number<std::int8_t>(NL80211_STA_INFO_SIGNAL_AVG, average);
    };
    const std::tuple<Builder, std::optional<std::int64_t>, std::optional<double>> cases[] = {
        {Builder(), {}, {}},
        {rate(Builder().number<std::uint32_t>(NL80211_RATE_INFO_BITRATE32, 57647)), {}, 5764.7},
        {rate(Builder().number<std::uint16_t>(NL80211_RATE_INFO_BITRATE, 65)), {}, 6.5},
        {rate(Builder().number<std::uint16_t>(NL80211_RATE_INFO_BITRATE32, 65)), {}, {}},
        {levels(-48, -50), -48, {}},
        {levels(0, -50), -50, {}},
        {levels(-128, 7), {}, {}},
        {Builder().number<std::int32_t>(NL80211_STA_INFO_SIGNAL, -48), {}, {}}};
    for (const auto& [information, signalDbm, transmitRate] : cases) {
        const Builder reply = stationReply(0, information);
        const auto station = parseStation(NetlinkAttributes(reply.bytes));
        EXPECT_EQ(station->signalDbm, signalDbm);
        EXPECT_EQ(station->transmitRate, transmitRate);
    }
}

TEST(NetlinkMessages, ReportTheErrorThatTheyCarry) {
    const std::tuple<std::uint16_t, std::int32_t, std::optional<int>> cases[] = {
        {NLMSG_ERROR, 0, 0},  {NLMSG_ERROR, -EBUSY, EBUSY},  {NLMSG_ERROR, INT32_MIN, EBADMSG},
        {NLMSG_DONE, 480, 0}, {NLMSG_DONE, -ENODEV, ENODEV}, {28, -EBUSY, {}}};
    for (const auto& [type, code, error] : cases) {
        const struct {
            nlmsghdr header;
            std::int32_t code;
        } message{{NLMSG_HDRLEN + 4, type, 0, 5, 0}, code};
        for (std::size_t size = 0; size <= sizeof message; ++size) {
            Bytes datagram = std::as_bytes(std::span(&message, 1)).first(size);
            const auto taken = takeNetlinkMessage(datagram);
            EXPECT_EQ(taken.has_value(), size == sizeof message) << "cut at " << size;
            EXPECT_TRUE(!taken || taken->reportedError() == error);
        }
    }
}

} // namespace
} // namespace tolvo::testing
