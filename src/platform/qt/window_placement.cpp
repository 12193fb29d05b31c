#include "platform/qt/window_placement.h"

#include <algorithm>

namespace tolvo {

namespace {

/// Between the icon and the popover, in points.
constexpr double popoverGap = 6;
/// And between the popover and the edges of the work area.
constexpr double edgeMargin = 6;
/// What must be on screen of a window's top edge to move it by.
constexpr double graspableWidth = 80;
constexpr double graspableHeight = 24;

double right(const ScreenRect& rect) {
    return rect.x + rect.width;
}
double bottom(const ScreenRect& rect) {
    return rect.y + rect.height;
}

/// The start of a stretch of this length that lies between the limits; the lower limit counts more.
double within(double start, double length, double lowest, double highest) {
    return std::max(lowest, std::min(start, highest - length));
}

bool isGraspable(const ScreenRect& frame, const ScreenRect& area) {
    const double visible = std::min(right(frame), right(area)) - std::max(frame.x, area.x);
    return visible >= std::min(graspableWidth, frame.width) && frame.y >= area.y &&
           frame.y + graspableHeight <= bottom(area);
}

} // namespace

ScreenRect popoverFrame(const ScreenRect& place, ContentSize size, const ScreenRect& workArea) {
    const double height = std::min(size.height, workArea.height - 2 * edgeMargin);
    const double middleX = place.x + place.width / 2;
    const double middleY = place.y + place.height / 2;
    const double x = middleX - size.width / 2;
    double y = bottom(place) + popoverGap;
    const bool isBesidePanel = middleX < workArea.x || middleX > right(workArea);
    if (isBesidePanel)
        y = middleY - height / 2;
    else if (y + height > bottom(workArea) && middleY > workArea.y + workArea.height / 2)
        y = place.y - popoverGap - height;
    return {within(x, size.width, workArea.x + edgeMargin, right(workArea) - edgeMargin),
            within(y, height, workArea.y + edgeMargin, bottom(workArea) - edgeMargin), size.width, height};
}

ScreenRect frameOnScreen(const ScreenRect& frame, std::span<const ScreenRect> workAreas) {
    if (workAreas.empty() || std::ranges::any_of(workAreas, [&](const auto& area) { return isGraspable(frame, area); }))
        return frame;
    const ScreenRect& area = workAreas.front();
    const double width = std::min(frame.width, area.width);
    const double height = std::min(frame.height, area.height);
    return {within(frame.x, width, area.x, right(area)), within(frame.y, height, area.y, bottom(area)), width, height};
}

} // namespace tolvo
