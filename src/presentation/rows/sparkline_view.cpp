#include "presentation/rows/sparkline_view.h"

#include "presentation/rows/sparkline.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
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

SparklinePaths sparklinePaths(const QRectF& rect, std::span<const double> samples,
                              const std::optional<ValueRange>& yDomain) {
    SparklinePaths paths;
    const QPolygonF points = polygon(rect, samples, yDomain);
    if (points.isEmpty())
        return paths;
    paths.line.addPolygon(points);
    paths.area = paths.line;
    paths.area.lineTo(rect.bottomRight());
    paths.area.lineTo(rect.bottomLeft());
    paths.area.closeSubpath();
    return paths;
}

void paintSparkline(QPainter& painter, const QRectF& rect, std::span<const double> samples,
                    const std::optional<ValueRange>& yDomain, const QColor& strokeColor) {
    // Room for half a line at each edge, so that a value at the end of its range is not cut.
    const QRectF inner = rect.adjusted(shadowWidth / 2, shadowWidth / 2, -shadowWidth / 2, -shadowWidth / 2);
    const SparklinePaths paths = sparklinePaths(inner, samples, yDomain);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(paths.area, withOpacity(strokeColor, areaOpacity));
    painter.strokePath(paths.line, pen(withOpacity(strokeColor, shadowOpacity), shadowWidth));
    painter.strokePath(paths.line, pen(strokeColor, lineWidth));
}

} // namespace tolvo
