#pragma once

#include "core/model/raw_value.h"

namespace tolvo {

/// Band of a channel; its raw value is also its label.
enum class WiFiBand { TwoPointFourGigahertz, FiveGigahertz, SixGigahertz, Unknown };

template<>
inline constexpr RawValueTable<WiFiBand, 4> rawValueTable<WiFiBand>{{
    {WiFiBand::TwoPointFourGigahertz, "2.4 GHz"},
    {WiFiBand::FiveGigahertz, "5 GHz"},
    {WiFiBand::SixGigahertz, "6 GHz"},
    {WiFiBand::Unknown, "Unknown"},
}};

} // namespace tolvo
