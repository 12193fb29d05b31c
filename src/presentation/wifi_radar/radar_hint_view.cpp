#include "presentation/wifi_radar/radar_hint_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int symbolSize = 30;
constexpr int gap = 10;
constexpr int verticalPadding = 5;

} // namespace

RadarHintView::RadarHintView(QWidget* parent) : QLabel(parent) {
    setFont(textFont(TextStyle::Title, *this));
    setAccessibleName(toQString(wifi_radar::hintLabel));
}

void RadarHintView::show(const WiFiRadarContent& content) {
    symbolName_ = content.hintSymbolName;
    hint_ = toQString(content.hint);
    color_ = content.scoreColor;
    setAccessibleDescription(hint_);
    updateGeometry();
    update();
}

QSize RadarHintView::sizeHint() const {
    return {symbolSize + gap + fontMetrics().horizontalAdvance(hint_),
            std::max(symbolSize, fontMetrics().height()) + 2 * verticalPadding};
}

void RadarHintView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor color = toneColor(color_, palette());
    const QRect text = QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(symbolSize + gap, 0, 0, 0));
    painter.setPen(color);
    painter.drawText(text, static_cast<int>(visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter)), hint_);
    // The way on is the way that one reads.
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    drawSymbol(painter, symbolName_, QRectF(0, (height() - symbolSize) / 2.0, symbolSize, symbolSize), color);
}

} // namespace tolvo
