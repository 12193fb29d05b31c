#include "presentation/rows/name_label_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QTextDocument>

namespace tolvo {

QString plainToolTip(const QString& text) {
    // A tool tip that looks like markup is shown as such, so this one always is, and the name in it never.
    return Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal);
}

NameLabelView::NameLabelView(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void NameLabelView::show(std::string_view name) {
    setText(toQString(name));
    setToolTip(plainToolTip(text()));
    // Else the tool tip's markup would be read out.
    setAccessibleDescription(text());
}

QSize NameLabelView::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

void NameLabelView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.drawText(rect(), static_cast<int>(visualAlignment(*this, Qt::AlignVCenter | Qt::AlignLeft)),
                     fontMetrics().elidedText(text(), Qt::ElideRight, width()));
}

} // namespace tolvo
