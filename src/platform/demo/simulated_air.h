#pragma once

#include "core/async/main_loop.h"
#include "platform/demo/simulated_building.h"
#include "platform/services/wifi_client.h"

#include <cstdint>

namespace tolvo {

/// A made-up Wi-Fi for screenshots, demonstrations and work without a radio: a walk through a building with two access
/// points of one network and some neighbours. All that it shows follows from the seed and from the time since it was
/// made. It is used only where the user asked for it, and whoever uses it says so.
class SimulatedAir final : public WiFiClient {
public:
    SimulatedAir(MainLoop& loop, std::uint64_t seed) : loop_(loop), seed_(seed), madeAt_(loop.now()) {}

    std::optional<WiFiLink> currentLink() override;
    Task<ScanOutcome> scan() override;

private:
    std::uint64_t currentStep() const;
    void walkTo(std::uint64_t step);
    double signalDbm(std::size_t accessPoint, std::uint64_t step) const;
    double noiseDbm(std::uint64_t step) const;
    bool isDetected(std::size_t accessPoint, double signal, std::uint64_t step) const;

    MainLoop& loop_;
    std::uint64_t seed_;
    MonotonicTime madeAt_;
    std::uint64_t step_ = 0;
    std::size_t associated_ = 0;
};

} // namespace tolvo
