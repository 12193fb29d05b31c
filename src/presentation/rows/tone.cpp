#include "presentation/rows/tone.h"

#include <utility>

namespace tolvo {

Badge healthStateBadge(HealthState state) {
    switch (state) {
    case HealthState::Good:
        return {"Good", Tone::Green};
    case HealthState::Warning:
        return {"Warning", Tone::Orange};
    case HealthState::Poor:
        return {"Poor", Tone::Red};
    case HealthState::Disconnected:
        return {"Disconnected", Tone::Gray};
    }
    std::unreachable();
}

Badge signalQualityBadge(SignalQuality quality) {
    switch (quality) {
    case SignalQuality::Good:
        return healthStateBadge(HealthState::Good);
    case SignalQuality::Warning:
        return healthStateBadge(HealthState::Warning);
    case SignalQuality::Poor:
        return healthStateBadge(HealthState::Poor);
    }
    std::unreachable();
}

} // namespace tolvo
