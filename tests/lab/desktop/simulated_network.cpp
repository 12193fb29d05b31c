#include "tests/lab/desktop/simulated_network.h"

#include "core/sample_history.h"

#include <cmath>
#include <utility>

namespace tolvo::testing {

namespace {

constexpr std::size_t historyLength = 60;

HealthState healthOf(const std::string& scene) {
    if (scene == "warning")
        return HealthState::Warning;
    if (scene == "poor")
        return HealthState::Poor;
    return scene == "offline" || scene == "empty" ? HealthState::Disconnected : HealthState::Good;
}

} // namespace

SimulatedNetwork::SimulatedNetwork(MainLoop& loop, std::string scene)
    : loop_(loop),
      scene_(std::move(scene)),
      badness_(scene_ == "poor"      ? 8
               : scene_ == "warning" ? 3
                                     : 1) {
    values.healthState.set(healthOf(scene_));
    values.isMonitoringEnabled.set(scene_ != "paused");
    values.isConnected.set(scene_ != "offline" && scene_ != "empty");
    if (scene_ == "paused")
        statusMessage = "Monitoring is paused.";
    if (scene_ == "portal") {
        CaptivePortalStatus status{std::chrono::system_clock::now(),
                                   true,
                                   URL::parse("https://login.hotel.example/welcome?session=8d1f0c2e77b34a"),
                                   {},
                                   CaptivePortalDetectionReason::Redirect};
        values.captivePortalStatus.set(status);
    }
    for (std::size_t i = 0; scene_ != "empty" && i < historyLength; ++i)
        poll();
    setMonitoringEnabled(values.isMonitoringEnabled.value());
}

void SimulatedNetwork::setMonitoringEnabled(bool isEnabled) {
    statusMessage = isEnabled ? "Monitoring active in detailed mode." : "Monitoring is paused.";
    values.isMonitoringEnabled.set(isEnabled);
    if (isEnabled)
        poll();
    else
        next_.reset();
}

DashboardSources SimulatedNetwork::sources() {
    DashboardSources sources = values.sources();
    sources.statusMessage = [this] { return statusMessage; };
    return sources;
}

double SimulatedNetwork::wave(double middle, double swing, double period) const {
    const double t = count_;
    return middle + swing * std::sin(t / period) + swing * 0.4 * std::sin(t * 1.7 + period);
}

void SimulatedNetwork::poll() {
    ++count_;
    if (scene_ != "empty" && scene_ != "offline")
        pollWiFi();
    if (scene_ != "empty") {
        pollLatency();
        pollConnections();
    }
    next_ = loop_.after(Seconds(0.5), [this] { poll(); });
}

void SimulatedNetwork::pollWiFi() {
    WiFiSnapshot snapshot = exampleWiFiSnapshot();
    snapshot.rssiDbm = static_cast<std::int64_t>(wave(-48 - 3 * badness_, 4, 7));
    snapshot.noiseFloorDbm = static_cast<std::int64_t>(wave(-92, 1, 3));
    snapshot.snrDb = snapshot.rssiDbm - snapshot.noiseFloorDbm;
    snapshot.linkRateMbps = static_cast<std::int64_t>(wave(720, 120, 5));
    appendSample(values.wifiHistory, snapshot, historyLength);
    values.latestSnapshot.set(snapshot);
}

void SimulatedNetwork::pollLatency() {
    const WallTime now = std::chrono::system_clock::now();
    const bool isOnline = scene_ != "offline";
    const auto some = [&](double value) { return isOnline ? std::optional(value) : std::nullopt; };
    const PingResult router{PingTarget::Router, now, some(wave(3.4, 1, 4) * badness_), some(0.4), 0, isOnline};
    const PingResult internet{
        PingTarget::Internet,          now,     some(wave(14.6, 3, 5) * badness_), some(wave(2, 0.8, 3) * badness_),
        isOnline ? badness_ - 1 : 100, isOnline};
    const DNSResult dns{"cloudflare.com", now, some(wave(18, 6, 4) * badness_), isOnline};
    appendSample(values.routerHistory, router, historyLength);
    appendSample(values.internetHistory, internet, historyLength);
    appendSample(values.dnsHistory, dns, historyLength);
    values.routerResult.set(router);
    values.internetResult.set(internet);
    values.dnsResult.set(dns);
}

void SimulatedNetwork::pollConnections() {
    const auto count = [&](double middle) { return static_cast<std::int64_t>(wave(middle * badness_, middle / 5, 6)); };
    const ConnectionPressureResult result{
        std::chrono::system_clock::now(), {count(84), count(21), count(4)}, SignalQuality::Good};
    appendSample(connectionHistory, result, historyLength);
    values.connectionResult.set(result);
}

} // namespace tolvo::testing
