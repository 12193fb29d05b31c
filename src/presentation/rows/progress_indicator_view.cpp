#include "presentation/rows/progress_indicator_view.h"

#include "presentation/rows/style_view.h"

#include <QPainter>

namespace tolvo {

namespace {

constexpr int side = 16;
constexpr double penWidth = 2;
constexpr int turnMilliseconds = 900;
/// QPainter counts angles in sixteenths of a degree.
constexpr int wholeTurn = 360 * 16;

} // namespace

ProgressIndicatorView::ProgressIndicatorView(QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
    turn_.setDuration(turnMilliseconds);
    turn_.setStartValue(0);
    turn_.setEndValue(-wholeTurn);
    turn_.setLoopCount(-1);
    connect(&turn_, &QVariantAnimation::valueChanged, this, [this] { update(); });
    hide();
}

void ProgressIndicatorView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    turn_.start();
}

void ProgressIndicatorView::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    turn_.stop();
}

void ProgressIndicatorView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(toneColor(Tone::Blue, palette()), penWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(QRectF(rect()).adjusted(penWidth, penWidth, -penWidth, -penWidth), turn_.currentValue().toInt(),
                    wholeTurn * 3 / 4);
}

} // namespace tolvo
