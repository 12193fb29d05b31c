#include "presentation/rows/inline_message_view.h"

#include "presentation/rows/breakable_text_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"

#include <QEvent>
#include <QPainter>

namespace tolvo {

namespace {

constexpr double groundOpacity = 0.1;

} // namespace

InlineMessageView::InlineMessageView(QWidget* parent) : QLabel(parent) {
    setContentsMargins(12, 8, 12, 8);
    alignLeading(*this);
}

void InlineMessageView::show(const InlineMessageRow& row) {
    if (row == row_)
        return;
    row_ = row;
    showBreakable(*this, row.text);
    applyColor();
}

void InlineMessageView::applyColor() {
    QPalette colors;
    colors.setColor(QPalette::WindowText, toneColor(row_.accentColor, parentWidget()->palette()));
    setPalette(colors);
}

void InlineMessageView::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        applyColor();
}

void InlineMessageView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(toneColor(row_.accentColor, palette()), groundOpacity));
    painter.drawRoundedRect(rect(), cardRadius, cardRadius);
    QLabel::paintEvent(event);
}

} // namespace tolvo
