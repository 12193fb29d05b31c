#include "platform/linux/nl80211/nl80211_scanner.h"

#include "core/async/one_shot.h"
#include "platform/linux/nl80211/channel_of_frequency.h"
#include "platform/linux/nl80211/nl80211_link.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tolvo {

namespace {

/// A scan of all channels takes some 5 s while a link is kept, and NetworkManager may put one off for up to 8 s.
constexpr Seconds longestScan{15};

/// The kernel forgets what it hasn't heard for so long.
constexpr Seconds presentResultsAge{30};

/// The kernel counts ages in ticks of up to 10 ms.
constexpr Seconds ageTolerance{0.05};

/// NetworkManager spaces scans some 8 s apart. A request so soon after a scan that was seen from its beginning is given
/// that scan's results, if no new scan begins within the patience: three passes in a row would take 25 s otherwise.
constexpr Seconds soonAfterScan{15};
constexpr Seconds patienceForStart{2};

enum class ScanEnd { Completed, Aborted, PutOff, TimedOut };

WiFiScanError refusal(int error) {
    if (error == ENETDOWN)
        return {"The Wi-Fi interface is switched off."};
    // Untranslated: a locale's words need not be UTF-8, which a report is.
    const char* const description = strerrordesc_np(error);
    return {"The Wi-Fi driver doesn't scan: " + std::string(description ? description : "unknown error") + "."};
}

WiFiScanError missingRight(const std::string& requesterWords) {
    return {"A scan takes NetworkManager or the capability CAP_NET_ADMIN. NetworkManager: " + requesterWords};
}

Seconds ageOf(const BSSEntry& entry, std::chrono::nanoseconds sinceBoot) {
    if (entry.lastSeenSinceBoot)
        return sinceBoot - *entry.lastSeenSinceBoot;
    return entry.age.value_or(std::chrono::milliseconds(0));
}

WiFiClient::ScanOutcome networksOf(const std::expected<std::vector<BSSEntry>, WiFiScanError>& entries) {
    if (!entries)
        return std::unexpected(entries.error());
    std::vector<WiFiNetwork> result;
    result.reserve(entries->size());
    for (const BSSEntry& entry : *entries)
        result.push_back({entry.ssid, entry.bssid, entry.signalDbm, channelOfFrequency(entry.frequencyMHz)});
    return result;
}

} // namespace

struct Nl80211Scanner::Progress {
    MonotonicTime requestedAt;
    bool hasStarted = false;
    OneShot<ScanEnd> end;
    ScanEnd reached = ScanEnd::TimedOut;

    void hear(std::uint8_t command) {
        if (command == NL80211_CMD_TRIGGER_SCAN)
            hasStarted = true;
        else
            end.set(command == NL80211_CMD_NEW_SCAN_RESULTS ? ScanEnd::Completed : ScanEnd::Aborted);
    }
    void giveUpUnlessStarted() const {
        if (!hasStarted)
            end.set(ScanEnd::PutOff);
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
    Progress progress;
    progress.requestedAt = loop_.now();
    // Heard from before the start on, so that no end is missed.
    const auto events = kernel_.watchScans([&](std::uint8_t command, NetlinkAttributes event) {
        if (parseWiphy(event) == interface.wiphy)
            progress.hear(command);
    });
    if (!events)
        co_return std::unexpected(refusal(events.error()));
    const auto starter = co_await start(interface.index, interface.name);
    if (!starter)
        co_return presentResults(interface.index, starter.error());
    co_await waitForEnd(*starter, progress);
    co_return outcomeOf(interface.index, progress);
}

Task<void> Nl80211Scanner::waitForEnd(Starter starter, Progress& progress) {
    const auto deadline = loop_.after(longestScan, [&] { progress.end.set(ScanEnd::TimedOut); });
    LoopRegistration patience;
    if (starter == Starter::Requester && isSoonAfterScan())
        patience = loop_.after(patienceForStart, [&] { progress.giveUpUnlessStarted(); });
    progress.reached = co_await progress.end.take();
}

WiFiClient::ScanOutcome Nl80211Scanner::outcomeOf(std::uint32_t interfaceIndex, const Progress& progress) {
    switch (progress.reached) {
    case ScanEnd::Completed:
        return freshResults(interfaceIndex, progress);
    case ScanEnd::PutOff:
        return resultsSince(interfaceIndex, *lastScanRequestedAt_);
    case ScanEnd::Aborted:
        return presentResults(interfaceIndex, {"The scan was ended before its time."});
    case ScanEnd::TimedOut:
        break;
    }
    return presentResults(interfaceIndex, {"The scan did not end within 15 seconds."});
}

bool Nl80211Scanner::isSoonAfterScan() const {
    return lastScanRequestedAt_ && loop_.now() - *lastScanRequestedAt_ <= soonAfterScan;
}

Task<std::expected<Nl80211Scanner::Starter, WiFiScanError>> Nl80211Scanner::start(std::uint32_t interfaceIndex,
                                                                                  std::string interfaceName) {
    const auto triggered = kernel_.triggerScan(interfaceIndex);
    if (triggered || triggered.error() == EBUSY)
        co_return Starter::Kernel;
    if (triggered.error() != EPERM)
        co_return std::unexpected(refusal(triggered.error()));
    const auto requested = co_await requester_.requestScan(std::move(interfaceName));
    if (!requested)
        co_return std::unexpected(missingRight(requested.error()));
    co_return Starter::Requester;
}

WiFiClient::ScanOutcome Nl80211Scanner::freshResults(std::uint32_t interfaceIndex, const Progress& progress) {
    // Of a scan that was joined the start is not known.
    if (!progress.hasStarted)
        return networksOf(entriesHeardWithin(interfaceIndex, presentResultsAge));
    lastScanRequestedAt_ = progress.requestedAt;
    return resultsSince(interfaceIndex, progress.requestedAt);
}

WiFiClient::ScanOutcome Nl80211Scanner::resultsSince(std::uint32_t interfaceIndex, MonotonicTime requestedAt) {
    // What was heard before the scan may be gone.
    return networksOf(entriesHeardWithin(interfaceIndex, Seconds(loop_.now() - requestedAt) + ageTolerance));
}

WiFiClient::ScanOutcome Nl80211Scanner::presentResults(std::uint32_t interfaceIndex, WiFiScanError whyNoScan) {
    const auto entries = entriesHeardWithin(interfaceIndex, presentResultsAge);
    // The link's own access point is always fresh, by its beacons; it takes another one to show that somebody scanned.
    const bool hasOthers = entries && !std::ranges::all_of(*entries, &BSSEntry::isAssociated);
    if (!hasOthers)
        return std::unexpected(std::move(whyNoScan));
    return networksOf(entries);
}

std::expected<std::vector<BSSEntry>, WiFiScanError> Nl80211Scanner::entriesHeardWithin(std::uint32_t interfaceIndex,
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
