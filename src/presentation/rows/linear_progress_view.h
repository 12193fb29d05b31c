#pragma once

#include <QProgressBar>

namespace tolvo {

/// A thin bar that fills in the direction of reading. Assistive programs are told whole percents.
class LinearProgressView final : public QProgressBar {
public:
    explicit LinearProgressView(QWidget* parent = nullptr);

    /// 0 to 1.
    void show(double share);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double share_ = 0;
};

/// A rounded bar of that share over its track, filled in the direction of reading.
void paintBar(QPainter& painter, const QRectF& rect, double share, const QColor& color, const QWidget& widget);

} // namespace tolvo
