#pragma once

#include "platform/services/screen_geometry.h"

#include <QRect>
#include <QSize>

namespace tolvo {

inline ScreenRect toScreenRect(const QRect& rect) {
    return {static_cast<double>(rect.x()), static_cast<double>(rect.y()), static_cast<double>(rect.width()),
            static_cast<double>(rect.height())};
}

inline QRect toQRect(const ScreenRect& rect) {
    return QRectF(rect.x, rect.y, rect.width, rect.height).toRect();
}

inline QSize toQSize(const ContentSize& size) {
    return QSizeF(size.width, size.height).toSize();
}

} // namespace tolvo
