#include "presentation/rows/symbol_ground_view.h"

#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>

namespace tolvo {

namespace {

constexpr double groundOpacity = 0.16;
constexpr double symbolShare = 0.6;
constexpr double roundness = 0.27;

} // namespace

SymbolGroundView::SymbolGroundView(int side, QWidget* parent) : QWidget(parent) {
    setFixedSize(side, side);
}

void SymbolGroundView::show(std::string_view symbolName, Tone color) {
    if (symbolName == symbolName_ && color == color_)
        return;
    symbolName_ = symbolName;
    color_ = color;
    update();
}

void SymbolGroundView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = toneColor(color_, palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(color, groundOpacity));
    painter.drawRoundedRect(rect(), roundness * width(), roundness * width());
    QRectF symbol(0, 0, symbolShare * width(), symbolShare * width());
    symbol.moveCenter(QRectF(rect()).center());
    drawSymbol(painter, symbolName_, symbol, color);
}

} // namespace tolvo
