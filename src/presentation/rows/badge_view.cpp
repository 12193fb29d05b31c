#include "presentation/rows/badge_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/name_label_view.h"
#include "presentation/rows/style_view.h"

#include <QPainter>

namespace tolvo {

namespace {

constexpr double stateGroundOpacity = 0.2;
constexpr int horizontalPadding = 8;
constexpr int verticalPadding = 2;

} // namespace

QFont badgeFont(const QWidget& widget) {
    QFont font = textFont(TextStyle::Caption, widget);
    font.setWeight(QFont::DemiBold);
    return font;
}

QSize badgeSize(const QFontMetrics& metrics, std::string_view text) {
    return {metrics.horizontalAdvance(toQString(text)) + 2 * horizontalPadding, metrics.height() + 2 * verticalPadding};
}

void paintBadge(QPainter& painter, const QRectF& rect, const Badge& badge, double groundOpacity,
                const QPalette& palette) {
    const QColor tone = toneColor(badge.tone, palette);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(tone, groundOpacity));
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
    painter.setPen(tone);
    const double width = rect.width() - 2 * horizontalPadding + 1;
    painter.drawText(rect, Qt::AlignCenter,
                     QFontMetricsF(painter.font()).elidedText(toQString(badge.text), Qt::ElideMiddle, width));
}

BadgeView::BadgeView(QWidget* parent) : QLabel(parent) {
    setFont(badgeFont(*this));
    setTextFormat(Qt::PlainText);
    setContentsMargins(horizontalPadding, verticalPadding, horizontalPadding, verticalPadding);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void BadgeView::show(const Badge& badge) {
    if (badge == badge_)
        return;
    badge_ = badge;
    setText(toQString(badge.text));
    update();
}

void BadgeView::setDetail(std::string_view text) {
    const QString whole = toQString(text);
    if (whole == accessibleDescription())
        return;
    setToolTip(whole.isEmpty() ? whole : plainToolTip(whole));
    setAccessibleDescription(whole);
}

void BadgeView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintBadge(painter, rect(), badge_, stateGroundOpacity, palette());
}

} // namespace tolvo
