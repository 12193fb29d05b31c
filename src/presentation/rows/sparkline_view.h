#pragma once

#include "presentation/rows/metric_rows.h"

#include <QColor>
#include <QPainterPath>
#include <QRectF>

#include <optional>
#include <span>

class QPainter;

namespace tolvo {

/// A trend line and the area below it; both empty without samples.
struct SparklinePaths {
    QPainterPath line;
    QPainterPath area;
};

SparklinePaths sparklinePaths(const QRectF& rect, std::span<const double> samples,
                              const std::optional<ValueRange>& yDomain);

/// The trend line with a tinted area below it. Time runs from left to right for every reader.
void paintSparkline(QPainter& painter, const QRectF& rect, std::span<const double> samples,
                    const std::optional<ValueRange>& yDomain, const QColor& strokeColor);

} // namespace tolvo
