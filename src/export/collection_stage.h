#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace tolvo {

/// What a collection goes through, in this order.
enum class CollectionStage { Metrics, WiFi, Latency, Channel, Speed, Finalize };

struct CollectionStageDescription {
    CollectionStage stage;
    std::string_view title;
    /// The progress when the stage begins, 0 to 1.
    double progressOnEntry;
};

inline constexpr std::array<CollectionStageDescription, 6> collectionStages{{
    {CollectionStage::Metrics, "Collecting metrics", 0.06},
    {CollectionStage::WiFi, "Collecting Wi-Fi metrics", 0.2},
    {CollectionStage::Latency, "Collecting latency metrics", 0.34},
    {CollectionStage::Channel, "Collecting channel info", 0.54},
    {CollectionStage::Speed, "Running speed test", 0.76},
    {CollectionStage::Finalize, "Finalizing report", 0.92},
}};

constexpr const CollectionStageDescription& descriptionOf(CollectionStage stage) {
    return collectionStages[static_cast<std::size_t>(stage)];
}

} // namespace tolvo
