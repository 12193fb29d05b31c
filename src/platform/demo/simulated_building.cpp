#include "platform/demo/simulated_building.h"

#include <algorithm>
#include <cmath>

namespace tolvo {

namespace {

using enum WiFiChannelBand;

constexpr const char* ownName = "Tolvo Demo";

constexpr SimulatedAccessPoint accessPoints[] = {
    {ownName, "02:54:4c:56:4f:01", {6, 7}, {44, FiveGigahertz}, 20},
    {ownName, "02:54:4c:56:4f:02", {34, 8}, {6, TwoGigahertz}, 17},
    {"Harbour Café", "02:10:00:00:00:11", {20, -12}, {6, TwoGigahertz}, 17},
    {"Studio Nord", "02:10:00:00:00:12", {-9, 6}, {1, TwoGigahertz}, 17},
    {"Studio Nord", "02:10:00:00:00:13", {-9, 6}, {36, FiveGigahertz}, 20},
    {"Apartment 4", "02:10:00:00:00:14", {48, 4}, {11, TwoGigahertz}, 17},
    {"Apartment 4", "02:10:00:00:00:15", {48, 4}, {149, FiveGigahertz}, 20},
    {nullptr, "02:10:00:00:00:16", {14, 24}, {11, TwoGigahertz}, 17},
    {"printer-setup", "02:10:00:00:00:17", {30, 20}, {3, TwoGigahertz}, 10},
    {"Workshop", "02:10:00:00:00:18", {25, 18}, {5, SixGigahertz}, 20},
};

constexpr FloorPosition tour[] = {{4, 4}, {14, 4}, {22, 10}, {36, 10}, {36, 3}, {20, 3}, {8, 12}, {4, 4}};
constexpr double metresPerSecond = 1.2;

double distance(FloorPosition a, FloorPosition b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

/// Loss over the first metre in free space, and the exponent of offices with thin walls (ITU-R P.1238).
struct Propagation {
    double firstMetreDb;
    double exponent;
};

Propagation propagation(WiFiChannelBand band) {
    switch (band) {
    case TwoGigahertz:
        return {40, 3.0};
    case FiveGigahertz:
        return {47, 3.1};
    case SixGigahertz:
    case Unknown:
        break;
    }
    return {48, 3.2};
}

struct RateStep {
    double snrDb;
    double rateMbps;
};

/// Two streams, short guard interval; the ratios are those at which common receivers still hold the rate.
constexpr RateStep wideRates[] = {{2, 65},   {5, 130},  {9, 195},  {11, 260}, {15, 390},
                                  {18, 520}, {20, 585}, {25, 650}, {29, 780}, {31, 866.7}};
constexpr RateStep narrowRates[] = {{2, 14.4},  {5, 28.9},   {9, 43.3}, {11, 57.8},
                                    {15, 86.7}, {18, 115.6}, {20, 130}, {25, 144.4}};

double bestRate(std::span<const RateStep> steps, double snrDb) {
    double rate = 1;
    for (const RateStep& step : steps) {
        if (snrDb >= step.snrDb)
            rate = step.rateMbps;
    }
    return rate;
}

} // namespace

std::span<const SimulatedAccessPoint> simulatedAccessPoints() {
    return accessPoints;
}

double secondsOfTour() {
    double metres = 0;
    for (std::size_t i = 1; i < std::size(tour); ++i)
        metres += distance(tour[i - 1], tour[i]);
    return metres / metresPerSecond;
}

FloorPosition positionOnTour(double seconds) {
    double metres = std::fmod(seconds, secondsOfTour()) * metresPerSecond;
    for (std::size_t i = 1; i < std::size(tour); ++i) {
        const double leg = distance(tour[i - 1], tour[i]);
        if (metres <= leg)
            return {std::lerp(tour[i - 1].x, tour[i].x, metres / leg),
                    std::lerp(tour[i - 1].y, tour[i].y, metres / leg)};
        metres -= leg;
    }
    return tour[0];
}

double meanSignalDbm(const SimulatedAccessPoint& accessPoint, FloorPosition position) {
    const auto [firstMetreDb, exponent] = propagation(accessPoint.channel.channelBand);
    const double metres = std::max(1.0, distance(accessPoint.position, position));
    return accessPoint.transmitPowerDbm - firstMetreDb - 10 * exponent * std::log10(metres);
}

double rateMbps(WiFiChannelBand band, double snrDb) {
    return band == TwoGigahertz ? bestRate(narrowRates, snrDb) : bestRate(wideRates, snrDb);
}

double simulatedChance(std::uint64_t seed, std::uint64_t stream, std::uint64_t index) {
    // SplitMix64's finisher over a sum of odd multiples.
    std::uint64_t z = seed * 0x9E3779B97F4A7C15 + stream * 0xD1B54A32D192ED03 + index * 0x8CB92BA72F3D8DD7;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return static_cast<double>((z ^ (z >> 31)) >> 11) * 0x1p-53;
}

} // namespace tolvo
