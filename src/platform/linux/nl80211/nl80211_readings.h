#pragma once

#include "platform/linux/nl80211/netlink_attributes.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace tolvo {

// What nl80211's replies say, as far as it is of use here: each function reads the attributes of one reply.

struct StationInterface {
    std::uint32_t wiphy = 0;
    std::uint32_t index = 0;
    std::string name;
    /// Present while the interface is attached to a network, and while it tries.
    std::optional<std::string> ssid;
    std::optional<std::uint32_t> frequencyMHz;
};

/// Nothing for what isn't a station with a network device: access points, monitors, P2P devices.
std::optional<StationInterface> parseStationInterface(NetlinkAttributes reply);

/// The access point as a station sees it.
struct StationReading {
    std::string address;
    bool isAssociated = false;
    std::optional<std::int64_t> signalDbm;
    /// In Mbit/s.
    std::optional<double> transmitRate;
};

std::optional<StationReading> parseStation(NetlinkAttributes reply);

struct SurveyEntry {
    std::uint32_t frequencyMHz = 0;
    bool isInUse = false;
    std::optional<std::int64_t> noiseDbm;
};

std::optional<SurveyEntry> parseSurvey(NetlinkAttributes reply);

/// An access point in the kernel's list of those heard.
struct BSSEntry {
    std::string bssid;
    std::uint32_t frequencyMHz = 0;
    std::int64_t signalDbm = 0;
    std::optional<std::string> ssid;
    bool isAssociated = false;
    /// How long ago it was heard: on the clock of the machine's boot, which goes on in its sleep, and as an age, which
    /// doesn't. Not every driver gives the first.
    std::optional<std::chrono::nanoseconds> lastSeenSinceBoot;
    std::optional<std::chrono::milliseconds> age;
};

std::optional<BSSEntry> parseBSS(NetlinkAttributes reply);

/// The radio that a message is about.
std::optional<std::uint32_t> parseWiphy(NetlinkAttributes message);

} // namespace tolvo
