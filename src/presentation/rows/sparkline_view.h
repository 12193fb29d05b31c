#pragma once

#include "presentation/rows/metric_rows.h"

#include <QColor>
#include <QRectF>

#include <optional>
#include <span>

class QPainter;

namespace tolvo {

/// The trend line with a tinted area below it. Time runs from left to right for every reader.
void paintSparkline(QPainter& painter, const QRectF& rect, std::span<const double> samples,
                    const std::optional<ValueRange>& yDomain, const QColor& strokeColor);

} // namespace tolvo
