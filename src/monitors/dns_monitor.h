#pragma once

#include "core/async/published.h"
#include "core/model/dns_result.h"
#include "core/model/signal_quality.h"
#include "core/model/wall_time.h"
#include "monitors/polled_monitor.h"
#include "probes/dns_lookup_running.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tolvo {

/// Times one look-up a poll, in rotation through a few domains so that no single cached answer decides the reading,
/// and grades the latest one. A failed look-up is a reading, and grades poor. Main thread only.
class DNSMonitor final : public PolledMonitor {
public:
    struct Configuration {
        /// Seconds.
        double pollInterval = 2.0;
        std::size_t maxHistorySampleCount = 60;
        /// Seconds for one look-up.
        double commandTimeout = 1.5;
        /// Trimmed, blank ones dropped; if nothing is left, defaultTestDomains() counts.
        std::vector<std::string> testDomains = defaultTestDomains();
    };

    /// Of a content-delivery and DNS provider, a search engine and a public resolver: unlikely to fail together.
    static std::vector<std::string> defaultTestDomains();

    DNSMonitor(MainLoop& loop, const Configuration& configuration, DNSLookupRunning& dnsLookupRunner,
               SleepProviding& sleeper, DateProvider dateProvider);

    Published<std::optional<DNSResult>> latestResult;
    /// Oldest first.
    Published<std::vector<DNSResult>> history;
    Published<SignalQuality> dnsQuality{SignalQuality::Poor};

    void resetTransientState() override;

private:
    Task<void> poll() override;
    std::string chooseDomain();

    const std::vector<std::string> testDomains_;
    const std::size_t maxHistorySampleCount_;
    const double commandTimeout_;
    DNSLookupRunning& dnsLookupRunner_;
    const DateProvider dateProvider_;
    std::size_t nextDomainIndex_ = 0;
};

} // namespace tolvo
