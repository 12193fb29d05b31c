#pragma once

#include <array>

namespace tolvo {

/// The pie wedge that goes round on the radar's face: from its beginning clockwise over so many degrees, as far as the
/// circle goes.
struct RadarSweepShape {
    double sweepDegrees = 72;
    /// How strongly it is filled with the score's colour, from its end, which goes ahead, back to its beginning.
    double leadingOpacity = 0.28;
    double trailingOpacity = 0.03;
};

inline constexpr RadarSweepShape radarSweepShape;

/// The rings, in shares of the face's radius.
inline constexpr std::array<double, 4> radarRings{0.25, 0.5, 0.75, 1};

} // namespace tolvo
