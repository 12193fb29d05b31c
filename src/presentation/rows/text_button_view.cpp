#include "presentation/rows/text_button_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QStyle>

#include <utility>

namespace tolvo {

namespace {

constexpr int horizontalPadding = 12;
constexpr int backPadding = 6;
constexpr int verticalPadding = 6;
constexpr int chevronSize = 12;
constexpr int symbolSize = 15;
constexpr int symbolGap = 6;

} // namespace

TextButtonView::TextButtonView(std::string_view title, ButtonProminence prominence, QWidget* parent)
    : ControlView(parent), prominence_(prominence) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setTitle(title);
}

void TextButtonView::setTitle(std::string_view title) {
    if (toQString(title) == accessibleName())
        return;
    // An ampersand in a text of ours is one, and no mnemonic.
    setText(toQString(title).replace(QLatin1Char('&'), QStringLiteral("&&")));
    setAccessibleName(toQString(title));
    updateGeometry();
}

void TextButtonView::setProminence(ButtonProminence prominence) {
    if (std::exchange(prominence_, prominence) != prominence)
        update();
}

void TextButtonView::setBackStyle() {
    isBack_ = true;
    updateGeometry();
}

void TextButtonView::setSymbol(std::string_view symbolName) {
    symbolName_ = symbolName;
    updateGeometry();
}

QSize TextButtonView::sizeHint() const {
    const int symbolWidth = symbolName_.empty() ? 0 : symbolSize + symbolGap;
    const int width = fontMetrics().horizontalAdvance(accessibleName()) + symbolWidth;
    const int height = fontMetrics().height() + 2 * verticalPadding;
    return {isBack_ ? width + chevronSize + 3 * backPadding : width + 2 * horizontalPadding, height};
}

void TextButtonView::paintGround(QPainter& painter) const {
    const bool isProminent = prominence_ == ButtonProminence::Prominent;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isProminent ? palette().highlight() : palette().button());
    if (!isBack_)
        painter.drawRoundedRect(rect(), controlRadius, controlRadius);
    painter.setBrush(withOpacity(toneColor(Tone::Primary, palette()), groundOpacity()));
    painter.drawRoundedRect(rect(), controlRadius, controlRadius);
}

void TextButtonView::paintFocus(QPainter& painter) const {
    if (prominence_ == ButtonProminence::Standard)
        return ControlView::paintFocus(painter);
    // The usual ring would have the ground's colour.
    paintFocusRing(painter, QRectF(rect()).adjusted(2, 2, -2, -2), controlRadius - 2, Qt::white);
}

void TextButtonView::paintSymbolAndTitle(QPainter& painter) const {
    const QColor color =
        prominence_ == ButtonProminence::Prominent ? QColor(Qt::white) : palette().color(QPalette::ButtonText);
    QRect title = rect();
    if (!symbolName_.empty()) {
        const QRect symbol(horizontalPadding, (height() - symbolSize) / 2, symbolSize, symbolSize);
        drawSymbol(painter, symbolName_, QStyle::visualRect(layoutDirection(), rect(), symbol), color);
        title.setLeft(symbol.right() + 1 + symbolGap);
        title.setRight(rect().right() - horizontalPadding);
    }
    painter.setPen(color);
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), title), Qt::AlignCenter, accessibleName());
}

void TextButtonView::paintControl(QPainter& painter) {
    paintGround(painter);
    if (!isBack_)
        return paintSymbolAndTitle(painter);
    const QColor color = toneColor(Tone::Blue, palette());
    const QRect chevron(backPadding, (height() - chevronSize) / 2, chevronSize, chevronSize);
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    drawSymbol(painter, isMirrored ? "chevron.right" : "chevron.left",
               QStyle::visualRect(layoutDirection(), rect(), chevron), color);
    painter.setPen(color);
    const QRect text = rect().adjusted(chevronSize + 2 * backPadding, 0, -backPadding, 0);
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), text), Qt::AlignCenter, accessibleName());
}

} // namespace tolvo
