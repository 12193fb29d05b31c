#include "presentation/rows/sparkline_view.h"

#include "presentation/rows/sparkline.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace tolvo {

namespace {

constexpr double areaOpacity = 0.2;
constexpr double shadowOpacity = 0.35;
constexpr double shadowWidth = 3.5;
constexpr double lineWidth = 1.5;

QPolygonF polygon(const QRectF& rect, std::span<const double> samples, const std::optional<ValueRange>& yDomain) {
    QPolygonF polygon;
    for (const SparklinePoint& point : sparklinePoints(samples, yDomain, rect.width(), rect.height()))
        polygon << rect.topLeft() + QPointF(point.x, point.y);
    return polygon;
}

QPen pen(const QColor& color, double width) {
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

} // namespace

void paintSparkline(QPainter& painter, const QRectF& rect, std::span<const double> samples,
                    const std::optional<ValueRange>& yDomain, const QColor& strokeColor) {
    // Room for half a line at each edge, so that a value at the end of its range is not cut.
    const QRectF inner = rect.adjusted(shadowWidth / 2, shadowWidth / 2, -shadowWidth / 2, -shadowWidth / 2);
    const QPolygonF line = polygon(inner, samples, yDomain);
    if (line.isEmpty())
        return;
    QPainterPath stroke;
    stroke.addPolygon(line);
    QPainterPath area = stroke;
    area.lineTo(inner.bottomRight());
    area.lineTo(inner.bottomLeft());
    area.closeSubpath();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(area, withOpacity(strokeColor, areaOpacity));
    painter.strokePath(stroke, pen(withOpacity(strokeColor, shadowOpacity), shadowWidth));
    painter.strokePath(stroke, pen(strokeColor, lineWidth));
}

} // namespace tolvo
