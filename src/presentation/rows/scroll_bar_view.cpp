#include "presentation/rows/scroll_bar_view.h"

#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace tolvo {

namespace {

constexpr double thickness = 6;
constexpr double opacityAtRest = 0.22;
constexpr double opacityInUse = 0.42;

} // namespace

ScrollBarView::ScrollBarView(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
    setAttribute(Qt::WA_Hover);
}

void ScrollBarView::paintEvent(QPaintEvent*) {
    if (minimum() == maximum())
        return;
    QStyleOptionSlider option;
    initStyleOption(&option);
    QRectF handle = style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this).toRectF();
    handle.adjust((handle.width() - thickness) / 2, 1, -(handle.width() - thickness) / 2, -1);
    const bool isInUse = underMouse() || isSliderDown();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(palette().color(QPalette::WindowText), isInUse ? opacityInUse : opacityAtRest));
    painter.drawRoundedRect(handle, thickness / 2, thickness / 2);
}

} // namespace tolvo
