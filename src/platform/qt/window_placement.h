#pragma once

#include "platform/services/screen_geometry.h"

#include <span>

namespace tolvo {

/// Where a popover of that size goes: below the place if there is room, else above it; beside it when the place is in a
/// panel at the left or right edge. Always inside the work area, a little off its edges, and for that as low as it must
/// be.
ScreenRect popoverFrame(const ScreenRect& place, ContentSize size, const ScreenRect& workArea);

/// The frame as it is when enough of it can be seen and grasped on one of the work areas, else moved, and if needed
/// made smaller, to lie within the first of them. The first is the primary one; without any the frame stays.
ScreenRect frameOnScreen(const ScreenRect& frame, std::span<const ScreenRect> workAreas);

} // namespace tolvo
