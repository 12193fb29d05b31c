#include "presentation/rows/text_button_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int horizontalPadding = 12;
constexpr int backPadding = 6;
constexpr int verticalPadding = 6;
constexpr int chevronSize = 12;

} // namespace

TextButtonView::TextButtonView(std::string_view title, ButtonProminence prominence, QWidget* parent)
    : ControlView(parent), prominence_(prominence) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setTitle(title);
}

void TextButtonView::setTitle(std::string_view title) {
    // An ampersand in a text of ours is one, and no mnemonic.
    setText(toQString(title).replace(QLatin1Char('&'), QStringLiteral("&&")));
    setAccessibleName(toQString(title));
    updateGeometry();
}

void TextButtonView::setBackStyle() {
    isBack_ = true;
    updateGeometry();
}

QSize TextButtonView::sizeHint() const {
    const int width = fontMetrics().horizontalAdvance(accessibleName());
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

void TextButtonView::paintControl(QPainter& painter) {
    paintGround(painter);
    if (!isBack_) {
        painter.setPen(prominence_ == ButtonProminence::Prominent ? QColor(Qt::white)
                                                                  : palette().color(QPalette::ButtonText));
        painter.drawText(rect(), Qt::AlignCenter, accessibleName());
        return;
    }
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
