#pragma once

#include "core/model/raw_value.h"

namespace tolvo {

/// Overall state of the connection.
enum class HealthState { Good, Warning, Poor, Disconnected };

template<>
inline constexpr RawValueTable<HealthState, 4> rawValueTable<HealthState>{{
    {HealthState::Good, "good"},
    {HealthState::Warning, "warning"},
    {HealthState::Poor, "poor"},
    {HealthState::Disconnected, "disconnected"},
}};

} // namespace tolvo
