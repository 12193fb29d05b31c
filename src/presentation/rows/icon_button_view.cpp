#include "presentation/rows/icon_button_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>

namespace tolvo {

namespace {

constexpr int symbolMargin = 7;

} // namespace

IconButtonView::IconButtonView(std::string_view symbolName, std::string_view accessibilityLabel,
                               std::string_view toolTip, QWidget* parent)
    : ControlView(parent), symbolName_(symbolName) {
    setAccessibleName(toQString(accessibilityLabel));
    setToolTip(toQString(toolTip));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void IconButtonView::setSymbolSize(int size) {
    symbolSize_ = size;
    updateGeometry();
}

QSize IconButtonView::sizeHint() const {
    const int side = symbolSize_ + 2 * symbolMargin;
    return {side, side};
}

void IconButtonView::paintControl(QPainter& painter) {
    const QColor text = toneColor(Tone::Primary, palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(text, groundOpacity()));
    painter.drawRoundedRect(rect(), controlRadius, controlRadius);
    QRectF symbol(0, 0, symbolSize_, symbolSize_);
    symbol.moveCenter(QRectF(rect()).center());
    drawSymbol(painter, symbolName_, symbol, withOpacity(text, underMouse() ? 1 : 0.8));
}

} // namespace tolvo
