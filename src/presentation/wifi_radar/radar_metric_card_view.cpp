#include "presentation/wifi_radar/radar_metric_card_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/sparkline_view.h"
#include "presentation/rows/style_view.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int padding = 11;
constexpr int usualWidth = 170;
constexpr int trendHeight = 40;
constexpr double areaOpacity = 0.2;
constexpr double referenceOpacity = 0.35;
constexpr double referenceWidth = 0.8;
constexpr double trendWidth = 1.6;

QFont valueFont(const QWidget& widget) {
    QFont font = textFont(TextStyle::Title, widget);
    font.setPointSizeF(font.pointSizeF() * 1.15);
    return font;
}

} // namespace

RadarMetricCardView::RadarMetricCardView(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void RadarMetricCardView::show(const RadarMetricCard& card) {
    if (card == card_)
        return;
    card_ = card;
    setAccessibleName(toQString(card.title));
    setAccessibleDescription(toQString(card.unit ? card.value + " " + *card.unit : card.value));
    update();
}

QSize RadarMetricCardView::sizeHint() const {
    const int title = QFontMetrics(textFont(TextStyle::Caption, *this)).height();
    const int value = QFontMetrics(valueFont(*this)).height();
    return {usualWidth, title + value + spacing::item + trendHeight + 2 * padding};
}

void RadarMetricCardView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintCard(painter, rect(), palette());
    const QRect inside = rect().adjusted(padding, padding, -padding, -padding);
    const QFont titleFont = textFont(TextStyle::Caption, *this);
    painter.setFont(titleFont);
    painter.setPen(toneColor(Tone::Secondary, palette()));
    painter.drawText(inside, static_cast<int>(visualAlignment(*this, Qt::AlignLeft | Qt::AlignTop)),
                     QFontMetrics(titleFont).elidedText(toQString(card_.title), Qt::ElideRight, inside.width()));
    const int valueHeight = QFontMetrics(valueFont(*this)).height();
    paintValue(painter, {inside.left(), inside.top() + QFontMetrics(titleFont).height(), inside.width(), valueHeight});
    paintTrend(painter, QRectF(inside.left(), inside.bottom() + 1 - trendHeight, inside.width(), trendHeight));
}

void RadarMetricCardView::paintValue(QPainter& painter, const QRect& line) const {
    const auto leading = visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter);
    const QString value = toQString(card_.value);
    const QFont font = valueFont(*this);
    // A number is written from left to right by every reader.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setFont(font);
    painter.setPen(toneColor(Tone::Primary, palette()));
    painter.drawText(line, static_cast<int>(leading), value);
    const int advance = QFontMetrics(font).horizontalAdvance(value) + 5;
    painter.setFont(textFont(TextStyle::Caption, *this));
    painter.setPen(toneColor(Tone::Secondary, palette()));
    const QRect unit = QStyle::visualRect(layoutDirection(), line, line.adjusted(advance, 0, 0, 0));
    painter.drawText(unit, static_cast<int>(leading), toQString(card_.unit.value_or("")));
}

void RadarMetricCardView::paintTrend(QPainter& painter, const QRectF& rect) const {
    const QColor color = toneColor(card_.color, palette());
    const SparklinePaths paths =
        sparklinePaths(rect.adjusted(1, trendWidth, -1, -trendWidth), card_.samples, card_.yDomain);
    if (paths.line.isEmpty())
        return;
    const double middle = rect.center().y();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(paths.area, withOpacity(color, areaOpacity));
    painter.setPen(QPen(withOpacity(color, referenceOpacity), referenceWidth));
    painter.drawLine(QPointF(rect.left(), middle), QPointF(rect.right(), middle));
    painter.strokePath(paths.line, QPen(color, trendWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace tolvo
