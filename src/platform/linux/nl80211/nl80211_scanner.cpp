#include "platform/linux/nl80211/nl80211_scanner.h"

#include "core/async/one_shot.h"
#include "platform/linux/nl80211/channel_of_frequency.h"
#include "platform/linux/nl80211/nl80211_link.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace tolvo {

namespace {

/// A scan of all channels takes some 5 s while a link is kept, and NetworkManager may put one off for up to 8 s.
constexpr Seconds longestScan{15};

/// The kernel forgets what it hasn't heard for so long.
constexpr Seconds presentResultsAge{30};

/// The kernel counts ages in ticks of up to 10 ms.
constexpr Seconds ageTolerance{0.05};

enum class ScanEnd { Completed, Aborted, TimedOut };

WiFiScanError refusal(int error) {
    if (error == ENETDOWN)
        return {"The Wi-Fi interface is switched off."};
    return {"The Wi-Fi driver doesn't scan: " + std::generic_category().message(error) + "."};
}

WiFiScanError missingRight(const std::string& requesterWords) {
    return {"A scan takes NetworkManager or the capability CAP_NET_ADMIN. NetworkManager: " + requesterWords};
}

Seconds ageOf(const BSSEntry& entry, std::chrono::nanoseconds sinceBoot) {
    if (entry.lastSeenSinceBoot)
        return sinceBoot - *entry.lastSeenSinceBoot;
    return entry.age.value_or(std::chrono::milliseconds(0));
}

std::vector<WiFiNetwork> networks(const std::vector<BSSEntry>& entries) {
    std::vector<WiFiNetwork> result;
    result.reserve(entries.size());
    for (const BSSEntry& entry : entries)
        result.push_back({entry.ssid, entry.bssid, entry.signalDbm, channelOfFrequency(entry.frequencyMHz)});
    return result;
}

} // namespace

struct Nl80211Scanner::Progress {
    MonotonicTime requestedAt;
    bool hasStarted = false;
    OneShot<ScanEnd> end;

    void hear(std::uint8_t command) {
        if (command == NL80211_CMD_TRIGGER_SCAN)
            hasStarted = true;
        else
            end.set(command == NL80211_CMD_NEW_SCAN_RESULTS ? ScanEnd::Completed : ScanEnd::Aborted);
    }
};

Nl80211Scanner::Nl80211Scanner(MainLoop& loop, Nl80211Querying& kernel, WiFiScanRequesting& requester,
                               BootClock bootClock)
    : loop_(loop), kernel_(kernel), requester_(requester), bootClock_(std::move(bootClock)) {}

Task<WiFiClient::ScanOutcome> Nl80211Scanner::scan() {
    const auto found = findDefaultInterface(kernel_);
    if (!found || !*found)
        co_return std::unexpected(WiFiScanError{"There is no Wi-Fi interface."});
    const StationInterface interface = (*found)->interface;
    Progress progress{.requestedAt = loop_.now(), .hasStarted = false, .end = {}};
    // Heard from before the start on, so that no end is missed.
    const auto events = kernel_.watchScans([&](std::uint8_t command, NetlinkAttributes event) {
        if (parseWiphy(event) == interface.wiphy)
            progress.hear(command);
    });
    if (!events)
        co_return std::unexpected(refusal(events.error()));
    if (auto started = co_await start(interface.index, interface.name); !started)
        co_return presentResults(interface.index, std::move(started.error()));
    const auto deadline = loop_.after(longestScan, [end = progress.end] { end.set(ScanEnd::TimedOut); });
    switch (co_await progress.end.take()) {
    case ScanEnd::Completed:
        co_return freshResults(interface.index, progress);
    case ScanEnd::Aborted:
        co_return presentResults(interface.index, {"The scan was ended before its time."});
    case ScanEnd::TimedOut:
        break;
    }
    co_return presentResults(interface.index, {"The scan did not end within 15 seconds."});
}

Task<std::expected<void, WiFiScanError>> Nl80211Scanner::start(std::uint32_t interfaceIndex,
                                                               std::string interfaceName) {
    const auto triggered = kernel_.triggerScan(interfaceIndex);
    if (triggered || triggered.error() == EBUSY)
        co_return std::expected<void, WiFiScanError>();
    if (triggered.error() != EPERM)
        co_return std::unexpected(refusal(triggered.error()));
    const auto requested = co_await requester_.requestScan(std::move(interfaceName));
    if (!requested)
        co_return std::unexpected(missingRight(requested.error()));
    co_return std::expected<void, WiFiScanError>();
}

WiFiClient::ScanOutcome Nl80211Scanner::freshResults(std::uint32_t interfaceIndex, const Progress& progress) {
    // What was heard before the scan may be gone. Of a scan that was joined the start is not known.
    const Seconds longestAge =
        progress.hasStarted ? Seconds(loop_.now() - progress.requestedAt) + ageTolerance : presentResultsAge;
    const auto entries = entriesSince(interfaceIndex, longestAge);
    if (!entries)
        return std::unexpected(entries.error());
    return networks(*entries);
}

WiFiClient::ScanOutcome Nl80211Scanner::presentResults(std::uint32_t interfaceIndex, WiFiScanError whyNoScan) {
    const auto entries = entriesSince(interfaceIndex, presentResultsAge);
    // The link's own access point is always fresh, by its beacons; it takes another one to show that somebody scanned.
    const bool hasOthers = entries && !std::ranges::all_of(*entries, &BSSEntry::isAssociated);
    if (!hasOthers)
        return std::unexpected(std::move(whyNoScan));
    return networks(*entries);
}

std::expected<std::vector<BSSEntry>, WiFiScanError> Nl80211Scanner::entriesSince(std::uint32_t interfaceIndex,
                                                                                 Seconds longestAge) {
    // A list that changes while it is told is asked for anew; in a busy air the last one is good enough.
    constexpr int attempts = 3;
    std::vector<BSSEntry> entries;
    std::expected<void, int> listed;
    for (int attempt = 0; attempt == 0 || (attempt < attempts && !listed && listed.error() == EAGAIN); ++attempt) {
        entries.clear();
        listed = kernel_.list(NL80211_CMD_GET_SCAN, interfaceIndex, [&](NetlinkAttributes reply) {
            if (auto entry = parseBSS(reply))
                entries.push_back(std::move(*entry));
        });
    }
    if (!listed && listed.error() != EAGAIN)
        return std::unexpected(refusal(listed.error()));
    std::erase_if(entries, [&, sinceBoot = bootClock_()](const BSSEntry& entry) {
        return !entry.isAssociated && ageOf(entry, sinceBoot) > longestAge;
    });
    return entries;
}

} // namespace tolvo
