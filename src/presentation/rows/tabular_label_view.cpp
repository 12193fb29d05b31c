#include "presentation/rows/tabular_label_view.h"

#include "presentation/rows/style_view.h"

#include <QPainter>

namespace tolvo {

TabularLabelView::TabularLabelView(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFont(textFont(TextStyle::Headline, *this));
}

void TabularLabelView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(toneColor(Tone::Primary, palette()));
    drawTabularText(painter, rect(), visualAlignment(*this, Qt::AlignRight | Qt::AlignVCenter), text());
}

} // namespace tolvo
