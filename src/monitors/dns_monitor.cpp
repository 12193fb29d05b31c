#include "monitors/dns_monitor.h"

#include "core/model/grading.h"
#include "core/sample_history.h"
#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

std::vector<std::string> normalisedDomains(const std::vector<std::string>& domains) {
    std::vector<std::string> normalised;
    for (const std::string& domain : domains) {
        if (const auto name = trimmed(domain); !name.empty())
            normalised.emplace_back(name);
    }
    return normalised.empty() ? DNSMonitor::defaultTestDomains() : normalised;
}

} // namespace

std::vector<std::string> DNSMonitor::defaultTestDomains() {
    return {"cloudflare.com", "google.com", "dns.google"};
}

DNSMonitor::DNSMonitor(MainLoop& loop, const Configuration& configuration, DNSLookupRunning& dnsLookupRunner,
                       SleepProviding& sleeper, DateProvider dateProvider)
    : PolledMonitor(loop, sleeper, configuration.pollInterval),
      testDomains_(normalisedDomains(configuration.testDomains)),
      maxHistorySampleCount_(configuration.maxHistorySampleCount),
      commandTimeout_(configuration.commandTimeout),
      dnsLookupRunner_(dnsLookupRunner),
      dateProvider_(std::move(dateProvider)) {}

void DNSMonitor::resetTransientState() {
    latestResult.set(std::nullopt);
    history.set({});
    dnsQuality.set(SignalQuality::Poor);
    nextDomainIndex_ = 0;
}

std::string DNSMonitor::chooseDomain() {
    const std::size_t chosen = nextDomainIndex_;
    nextDomainIndex_ = (nextDomainIndex_ + 1) % testDomains_.size();
    return testDomains_[chosen];
}

Task<void> DNSMonitor::poll() {
    const std::string domain = chooseDomain();
    const std::optional<double> queryTime = co_await dnsLookupRunner_.queryTime(domain, commandTimeout_);
    const DNSResult result{domain, dateProvider_(), queryTime, queryTime.has_value()};
    latestResult.set(result);
    appendSample(history, result, maxHistorySampleCount_);
    dnsQuality.set(queryTimeQuality(queryTime));
}

} // namespace tolvo
