#pragma once

#include "core/model/raw_value.h"

namespace tolvo {

/// Grade of one measurement.
enum class SignalQuality { Good, Warning, Poor };

template<>
inline constexpr RawValueTable<SignalQuality, 3> rawValueTable<SignalQuality>{{
    {SignalQuality::Good, "good"},
    {SignalQuality::Warning, "warning"},
    {SignalQuality::Poor, "poor"},
}};

} // namespace tolvo
