#include "presentation/rows/control_view.h"

#include "presentation/rows/style_view.h"

#include <QEnterEvent>
#include <QFocusEvent>
#include <QPainter>
#include <QScrollArea>

namespace tolvo {

namespace {

/// A scroll area does so by itself only when the keyboard moves within it.
void scrollIntoView(QWidget& control) {
    for (QWidget* outer = control.parentWidget(); outer != nullptr; outer = outer->parentWidget()) {
        if (auto* scroll = qobject_cast<QScrollArea*>(outer))
            return scroll->ensureWidgetVisible(&control);
    }
}

} // namespace

ControlView::ControlView(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(true);
    setFlat(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::ArrowCursor);
}

void ControlView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.45);
    paintControl(painter);
    if (hasFocus() && hasKeyboardFocus_)
        paintFocus(painter);
}

void ControlView::focusInEvent(QFocusEvent* event) {
    hasKeyboardFocus_ = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
                        event->reason() == Qt::ShortcutFocusReason || event->reason() == Qt::OtherFocusReason;
    QPushButton::focusInEvent(event);
    if (hasKeyboardFocus_)
        scrollIntoView(*this);
}

void ControlView::enterEvent(QEnterEvent* event) {
    QPushButton::enterEvent(event);
    update();
}

void ControlView::leaveEvent(QEvent* event) {
    QPushButton::leaveEvent(event);
    update();
}

double ControlView::focusRadius() const {
    return controlRadius;
}

void ControlView::paintFocus(QPainter& painter) const {
    paintFocusRing(painter, rect(), focusRadius(), palette().color(QPalette::Highlight));
}

double ControlView::groundOpacity() const {
    if (isDown())
        return 0.16;
    return underMouse() && isEnabled() ? 0.09 : 0;
}

} // namespace tolvo
