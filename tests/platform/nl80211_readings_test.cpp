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
        {2412, {1, TwoGigahertz}},   {2472, {13, TwoGigahertz}},   {2484, {14, TwoGigahertz}},
        {2477, {0, Unknown}},        {2407, {0, Unknown}},         {4920, {184, Unknown}},
        {5180, {36, FiveGigahertz}}, {5885, {177, FiveGigahertz}}, {5935, {2, SixGigahertz}},
        {5955, {1, SixGigahertz}},   {7115, {233, SixGigahertz}},  {7120, {0, Unknown}},
        {5183, {0, Unknown}},        {58320, {1, Unknown}},        {64800, {4, Unknown}},
        {0, {0, Unknown}},           {4294967295, {0, Unknown}}};
    for (const auto& [frequency, channel] : cases)
        EXPECT_EQ(channelOfFrequency(frequency), channel) << frequency;
}

TEST(SSIDText, KeepsTextAndEscapesTheRest) {
    const std::pair<std::string, std::string> cases[] = {
        {"Caf\xC3\xA9 \xF0\x9F\x93\xB6", "Caf\xC3\xA9 \xF0\x9F\x93\xB6"},
        {"Caf\xE9", "Caf\\xe9"},
        {"\xC3", "\\xc3"},
        {"\xED\xA0\x80!", "\\xed\\xa0\\x80!"},
        {"a\0b"s, "a\0b"s},
        {std::string(32, '\xFF'), [] {
             std::string all;
             for (int i = 0; i < 32; ++i)
                 all += "\\xff";
             return all;
         }()}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(ssidText(bytesOf(bytes)), text);
}

TEST(SSIDText, IsFoundAmongTheElementsWhereverTheyAreCut) {
    const std::pair<std::string, std::optional<std::string>> cases[] = {{"\x01\x02\x82\x84\0\x04Home"s, "Home"},
                                                                        {"\0\0\x01\x01\x82"s, {}},
                                                                        {"\0\x03\0\0\0"s, {}},
                                                                        {"\0\x03\0\0x"s, "\0\0x"s},
                                                                        {"\0\x05Home"s, {}},
                                                                        {"\0"s, {}},
                                                                        {"\x01\xFF\0\x04Home"s, {}},
                                                                        {"\0\x21"s + std::string(33, 'x'), {}},
                                                                        {"", {}}};
    for (const auto& [elements, name] : cases)
        EXPECT_EQ(ssidOfInformationElements(bytesOf(elements)), name);
}

NetlinkBuilder rate(int type, std::integral auto value) {
    return NetlinkBuilder().put(NL80211_STA_INFO_TX_BITRATE, NetlinkBuilder().put(type, value));
}

TEST(Nl80211Readings, TakeTheRateAndTheLevelThatAreThere) {
    struct Case {
        const char* name;
        NetlinkBuilder information;
        std::optional<std::int64_t> signalDbm;
        std::optional<double> transmitRate;
    };
    const auto level = [](int type, int dbm) { return NetlinkBuilder().put(type, static_cast<std::int8_t>(dbm)); };
    const Case cases[] = {
        {"nothing", {}, {}, {}},
        {"wide rate", rate(NL80211_RATE_INFO_BITRATE32, std::uint32_t{57647}), {}, 5764.7},
        {"narrow rate", rate(NL80211_RATE_INFO_BITRATE, std::uint16_t{65}), {}, 6.5},
        {"rate of a wrong size", rate(NL80211_RATE_INFO_BITRATE32, std::uint16_t{65}), {}, {}},
        {"level", level(NL80211_STA_INFO_SIGNAL, -48).put(NL80211_STA_INFO_SIGNAL_AVG, std::int8_t{-50}), -48, {}},
        {"average", level(NL80211_STA_INFO_SIGNAL, 0).put(NL80211_STA_INFO_SIGNAL_AVG, std::int8_t{-50}), -50, {}},
        {"no level", level(NL80211_STA_INFO_SIGNAL, -128), {}, {}},
        {"level of a wrong size", NetlinkBuilder().put(NL80211_STA_INFO_SIGNAL, std::int32_t{-48}), {}, {}}};
    for (const auto& [name, information, signalDbm, transmitRate] : cases) {
        const NetlinkBuilder reply = stationReply(information);
        const auto station = parseStation(NetlinkAttributes(reply.bytes()));
        ASSERT_TRUE(station) << name;
        EXPECT_EQ(station->address, "02:00:00:00:01:00");
        EXPECT_EQ(station->signalDbm, signalDbm) << name;
        EXPECT_EQ(station->transmitRate, transmitRate) << name;
    }
}

TEST(Nl80211Readings, CutAtAnyByteGiveTheWholeTruthOrLess) {
    const NetlinkBuilder replies[] = {interfaceReply(3, "wlan0\0"s, 2437), stationReply(stationFlags(~0U)),
                                      surveyReply(2437, -92), bssReply("Home", 40)};
    std::size_t readings = 0;
    for (const NetlinkBuilder& reply : replies) {
        for (std::size_t size = 0; size <= reply.bytes().size(); ++size) {
            // A copy of exactly this size, so that a sanitizer sees each byte that is read beyond it.
            const std::vector<std::byte> cut(reply.bytes().begin(), reply.bytes().begin() + static_cast<long>(size));
            const NetlinkAttributes attributes(cut);
            if (const auto interface = parseStationInterface(attributes)) {
                EXPECT_EQ(interface->name, "wlan0");
                EXPECT_EQ(interface->ssid.value_or("Caf\xC3\xA9"), "Caf\xC3\xA9");
                ++readings;
            }
            if (const auto survey = parseSurvey(attributes)) {
                EXPECT_EQ(survey->noiseDbm, -92);
                ++readings;
            }
            if (const auto bss = parseBSS(attributes)) {
                EXPECT_EQ(bss->ssid, "Home");
                EXPECT_EQ(bss->signalDbm, -49) << "rounded, halves away from zero";
                ++readings;
            }
            if (const auto station = parseStation(attributes))
                readings += station->isAssociated ? 1 : 0;
        }
    }
    EXPECT_GT(readings, 4u);
}

TEST(NetlinkMessages, AreTakenOffADatagramUpToTheOneThatIsCut) {
    const auto message = [](std::uint16_t type, std::string_view payload) {
        const nlmsghdr header{static_cast<std::uint32_t>(NLMSG_HDRLEN + payload.size()), type, 0, 5, 0};
        return std::string(reinterpret_cast<const char*>(&header), sizeof header) + std::string(payload);
    };
    const auto number = [](std::int32_t value) {
        return std::string(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const std::string datagram = message(28, "\x07\x01\0\0"s) + message(NLMSG_DONE, number(0));
    for (std::size_t size = 0; size <= datagram.size(); ++size) {
        const std::string cut = datagram.substr(0, size);
        Bytes rest = bytesOf(cut);
        int count = 0;
        while (takeNetlinkMessage(rest))
            ++count;
        EXPECT_EQ(count, size == datagram.size() ? 2 : size >= 20 ? 1 : 0) << size;
    }
    const std::tuple<std::uint16_t, std::string, std::optional<int>> reports[] = {
        {NLMSG_ERROR, number(0), 0},  {NLMSG_ERROR, number(-EBUSY), EBUSY},     {NLMSG_ERROR, "", EBADMSG},
        {NLMSG_DONE, number(480), 0}, {NLMSG_DONE, number(-ENODEV), ENODEV},    {NLMSG_DONE, "", 0},
        {28, number(-EBUSY), {}},     {NLMSG_ERROR, number(INT32_MIN), EBADMSG}};
    for (const auto& [type, payload, error] : reports) {
        const std::string bytes = message(type, payload);
        Bytes rest = bytesOf(bytes);
        EXPECT_EQ(takeNetlinkMessage(rest)->reportedError(), error);
    }
}

} // namespace
} // namespace tolvo::testing
