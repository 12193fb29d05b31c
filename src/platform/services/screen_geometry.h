#pragma once

namespace tolvo {

/// A size in the desktop's logical points.
struct ContentSize {
    double width = 0;
    double height = 0;

    bool operator==(const ContentSize&) const = default;
};

/// A rectangle on the desktop in logical points, x to the right and y downwards. One of no size is a point.
struct ScreenRect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const ScreenRect&) const = default;
};

} // namespace tolvo
