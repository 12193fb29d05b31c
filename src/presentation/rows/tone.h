#pragma once

#include "core/model/health_state.h"
#include "core/model/signal_quality.h"

#include <string>

namespace tolvo {

/// The colours that contents speak of; each front end has its own shades of them. Dimmed is for what isn't there.
enum class Tone { Primary, Secondary, Dimmed, White, Green, Yellow, Orange, Red, Blue, Gray };

/// A state in one coloured word.
struct Badge {
    std::string text;
    Tone tone = Tone::Gray;

    bool operator==(const Badge&) const = default;
};

Badge healthStateBadge(HealthState state);
Badge signalQualityBadge(SignalQuality quality);

} // namespace tolvo
