#pragma once

#include "presentation/wifi_radar/wifi_radar_content.h"

#include <QLabel>

namespace tolvo {

/// A title, a value with its unit, and a trend line over a line of reference. For assistive programs it is a label of
/// that name, whose description is the value.
class RadarMetricCardView final : public QLabel {
public:
    explicit RadarMetricCardView(QWidget* parent = nullptr);

    void show(const RadarMetricCard& card);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintValue(QPainter& painter, const QRect& line) const;
    void paintTrend(QPainter& painter, const QRectF& rect) const;

    RadarMetricCard card_;
};

} // namespace tolvo
