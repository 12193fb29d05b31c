#include "presentation/rows/badge_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"

#include <QPainter>

namespace tolvo {

namespace {

constexpr double groundOpacity = 0.2;

} // namespace

BadgeView::BadgeView(QWidget* parent) : QLabel(parent) {
    QFont font = textFont(TextStyle::Caption, *this);
    font.setWeight(QFont::DemiBold);
    setFont(font);
    setContentsMargins(8, 2, 8, 2);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BadgeView::show(const Badge& badge) {
    badge_ = badge;
    setText(toQString(badge.text));
    update();
}

void BadgeView::paintEvent(QPaintEvent*) {
    const QColor tone = toneColor(badge_.tone, palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(tone, groundOpacity));
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    painter.setPen(tone);
    painter.drawText(rect(), Qt::AlignCenter, text());
}

} // namespace tolvo
