#include "platform/demo/simulated_air.h"

#include "core/async/sleep.h"

#include <algorithm>
#include <cmath>

namespace tolvo {

namespace {

/// The walk goes on in steps, so that it is the same however often somebody looks.
constexpr double secondsPerStep = 0.25;

/// A station looks for a better access point below this level, and moves to one that is so much better.
constexpr double roamThresholdDbm = -65;
constexpr double roamAdvantageDb = 8;

constexpr Seconds scanDuration{2.8};

/// People and doors change the level by a few decibels every second or so; each reading is a little off besides.
constexpr double shadowingDb = 4;
constexpr double jitterDb = 1;
constexpr std::uint64_t stepsPerShadow = 5;

/// Streams of chance that no access point has for its number.
constexpr std::uint64_t jitterStream = 1000;
constexpr std::uint64_t noiseStream = 2000;
constexpr std::uint64_t detectionStream = 3000;

double spread(double chance, double amplitude) {
    return (2 * chance - 1) * amplitude;
}

} // namespace

std::uint64_t SimulatedAir::currentStep() const {
    return static_cast<std::uint64_t>(Seconds(loop_.now() - madeAt_).count() / secondsPerStep);
}

void SimulatedAir::walkTo(std::uint64_t step) {
    // After a long pause the last round is enough to know where the station is.
    const auto stepsPerTour = static_cast<std::uint64_t>(secondsOfTour() / secondsPerStep);
    if (step > step_ + stepsPerTour)
        step_ = step - stepsPerTour;
    for (; step_ < step; ++step_) {
        const std::size_t other = ownAccessPointCount - 1 - associated_;
        const double present = signalDbm(associated_, step_ + 1);
        if (present < roamThresholdDbm && signalDbm(other, step_ + 1) > present + roamAdvantageDb)
            associated_ = other;
    }
}

double SimulatedAir::signalDbm(std::size_t accessPoint, std::uint64_t step) const {
    const FloorPosition position = positionOnTour(static_cast<double>(step) * secondsPerStep);
    const std::uint64_t shadow = step / stepsPerShadow;
    const double between = static_cast<double>(step % stepsPerShadow) / static_cast<double>(stepsPerShadow);
    const double shadowing = std::lerp(simulatedChance(seed_, accessPoint, shadow),
                                       simulatedChance(seed_, accessPoint, shadow + 1), between);
    return meanSignalDbm(simulatedAccessPoints()[accessPoint], position) + spread(shadowing, shadowingDb) +
           spread(simulatedChance(seed_, jitterStream + accessPoint, step), jitterDb);
}

double SimulatedAir::noiseDbm(std::uint64_t step) const {
    const auto band = simulatedAccessPoints()[associated_].channel.channelBand;
    const double usual = band == WiFiChannelBand::TwoGigahertz ? -91 : -95;
    return usual + spread(simulatedChance(seed_, noiseStream, step), 1.5);
}

std::optional<WiFiLink> SimulatedAir::currentLink() {
    const std::uint64_t step = currentStep();
    walkTo(step);
    const SimulatedAccessPoint& accessPoint = simulatedAccessPoints()[associated_];
    const double signal = signalDbm(associated_, step);
    const double noise = noiseDbm(step);
    return WiFiLink{.interfaceName = "demo0",
                    .ssid = accessPoint.ssid,
                    .bssid = accessPoint.bssid,
                    .rssiValue = std::llround(signal),
                    .noiseMeasurement = std::llround(noise),
                    .transmitRate = rateMbps(accessPoint.channel.channelBand, signal - noise),
                    .channel = accessPoint.channel};
}

bool SimulatedAir::isDetected(std::size_t accessPoint, double signal, std::uint64_t step) const {
    // The weaker it is, the easier a scan misses it.
    constexpr double neverHeardDbm = -93;
    constexpr double surelyHeardDbm = -78;
    const double probability = (signal - neverHeardDbm) / (surelyHeardDbm - neverHeardDbm);
    return accessPoint == associated_ || simulatedChance(seed_, detectionStream + accessPoint, step) < probability;
}

Task<WiFiClient::ScanOutcome> SimulatedAir::scan() {
    co_await sleepFor(scanDuration);
    const std::uint64_t step = currentStep();
    walkTo(step);
    std::vector<WiFiNetwork> networks;
    for (std::size_t i = 0; i < simulatedAccessPoints().size(); ++i) {
        const SimulatedAccessPoint& accessPoint = simulatedAccessPoints()[i];
        const double signal = signalDbm(i, step);
        if (!isDetected(i, signal, step))
            continue;
        networks.push_back({.ssid = accessPoint.ssid ? std::optional<std::string>(accessPoint.ssid) : std::nullopt,
                            .bssid = accessPoint.bssid,
                            .rssiValue = std::llround(signal),
                            .channel = accessPoint.channel});
    }
    co_return networks;
}

} // namespace tolvo
