#include "presentation/rows/linear_progress_view.h"

#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace tolvo {

namespace {

constexpr int usualWidth = 200;
constexpr int thickness = 6;
constexpr double trackOpacityOnDark = 0.07;
/// The same weight to the eye.
constexpr double trackOpacityOnLight = 0.09;

} // namespace

LinearProgressView::LinearProgressView(QWidget* parent) : QProgressBar(parent) {
    setTextVisible(false);
    setRange(0, 100);
    setFixedHeight(thickness);
}

void LinearProgressView::show(double share) {
    if (share == share_)
        return;
    share_ = share;
    setValue(static_cast<int>(std::lround(std::clamp(share, 0.0, 1.0) * 100)));
    update();
}

QSize LinearProgressView::sizeHint() const {
    return {usualWidth, thickness};
}

void LinearProgressView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintBar(painter, rect(), share_, palette().color(QPalette::Highlight), *this);
}

void paintBar(QPainter& painter, const QRectF& rect, double share, const QColor& color, const QWidget& widget) {
    const QPalette& palette = widget.palette();
    QPainterPath track;
    track.addRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(track, withOpacity(palette.color(QPalette::WindowText),
                                        isDark(palette) ? trackOpacityOnDark : trackOpacityOnLight));
    QRectF filled = rect;
    filled.setWidth(rect.width() * std::clamp(share, 0.0, 1.0));
    if (widget.layoutDirection() == Qt::RightToLeft)
        filled.moveRight(rect.right());
    // A bar shorter than its rounding stays inside the track's.
    painter.save();
    painter.setClipPath(track);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(filled, rect.height() / 2, rect.height() / 2);
    painter.restore();
}

} // namespace tolvo
