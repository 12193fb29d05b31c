#include "core/text.h"
#include "fuzz/require.h"
#include "platform/linux/nl80211/channel_of_frequency.h"
#include "platform/linux/nl80211/netlink_messages.h"
#include "platform/linux/nl80211/nl80211_readings.h"
#include "platform/linux/nl80211/ssid_text.h"

namespace {

using namespace tolvo;
using fuzzing::require;

void read(NetlinkAttributes attributes) {
    if (const auto interface = parseStationInterface(attributes)) {
        require(isValidUTF8(interface->name));
        require(isValidUTF8(interface->ssid.value_or("")));
    }
    if (const auto station = parseStation(attributes))
        require(!station->signalDbm || (*station->signalDbm < 0 && *station->signalDbm >= -120));
    if (const auto survey = parseSurvey(attributes))
        require(!survey->noiseDbm || (*survey->noiseDbm < 0 && *survey->noiseDbm >= -120));
    if (const auto bss = parseBSS(attributes)) {
        require(isValidUTF8(bss->ssid.value_or("")));
        require(bss->signalDbm <= 0 && bss->signalDbm >= -120);
        require(channelOfFrequency(bss->frequencyMHz).channelNumber <= 233);
    }
}

} // namespace

/// Any bytes as a datagram, as the attributes of one message, and as the information elements of a beacon.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bytes bytes = std::as_bytes(std::span(data, size));
    read(NetlinkAttributes(bytes));
    require(isValidUTF8(ssidOfInformationElements(bytes).value_or("")));
    Bytes datagram = bytes;
    while (const auto message = takeNetlinkMessage(datagram)) {
        require(message->reportedError().value_or(0) >= 0);
        if (const auto generic = parseGenericMessage(message->payload))
            read(NetlinkAttributes(generic->attributes));
    }
    return 0;
}
