#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/nl80211/nl80211_querying.h"
#include "platform/linux/nl80211/nl80211_readings.h"
#include "platform/linux/wifi_scan_requesting.h"
#include "platform/services/wifi_client.h"

#include <chrono>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Scans on the default interface: directly where this process may, else through somebody who may. It runs on the main
/// loop, by the kernel's scan events; the kernel does the work meanwhile, so there is nothing for a thread to do.
/// A scan that runs already is joined. Main thread only.
class Nl80211Scanner {
public:
    /// The time since the machine's start, its sleep included.
    using BootClock = std::function<std::chrono::nanoseconds()>;

    Nl80211Scanner(MainLoop& loop, Nl80211Querying& kernel, WiFiScanRequesting& requester, BootClock bootClock);

    Task<WiFiClient::ScanOutcome> scan();

private:
    struct Progress;

    /// A scan that runs already counts as the kernel's.
    enum class Starter { Kernel, Requester };
    Task<std::expected<Starter, WiFiScanError>> start(std::uint32_t interfaceIndex, std::string interfaceName);
    Task<void> waitForEnd(Starter starter, Progress& progress);
    bool isSoonAfterScan() const;
    WiFiClient::ScanOutcome outcomeOf(std::uint32_t interfaceIndex, const Progress& progress);
    WiFiClient::ScanOutcome freshResults(std::uint32_t interfaceIndex, const Progress& progress);
    WiFiClient::ScanOutcome resultsSince(std::uint32_t interfaceIndex, MonotonicTime requestedAt);
    WiFiClient::ScanOutcome presentResults(std::uint32_t interfaceIndex, WiFiScanError whyNoScan);
    std::expected<std::vector<BSSEntry>, WiFiScanError> entriesHeardWithin(std::uint32_t interfaceIndex,
                                                                           Seconds longestAge);

    MainLoop& loop_;
    Nl80211Querying& kernel_;
    WiFiScanRequesting& requester_;
    BootClock bootClock_;
    /// Of the last scan that was heard from its start to its end.
    std::optional<MonotonicTime> lastScanRequestedAt_;
};

} // namespace tolvo
