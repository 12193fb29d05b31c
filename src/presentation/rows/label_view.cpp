#include "presentation/rows/label_view.h"

#include "platform/qt/qt_text.h"

#include <QLabel>

namespace tolvo {

QLabel* makeLabel(std::string_view text, TextStyle style, QWidget* parent, QPalette::ColorRole color) {
    auto* label = new QLabel(toQString(text), parent);
    label->setTextFormat(Qt::PlainText);
    label->setFont(textFont(style, *parent));
    label->setForegroundRole(color);
    alignLeading(*label);
    return label;
}

QLabel* makeWrappedLabel(std::string_view text, TextStyle style, QWidget* parent, QPalette::ColorRole color) {
    QLabel* label = makeLabel(text, style, parent, color);
    label->setWordWrap(true);
    return label;
}

void alignLeading(QLabel& label) {
    // By itself a label follows its text's language, and stands apart from its neighbours where that is another.
    label.setAlignment(visualAlignment(label, Qt::AlignLeft | Qt::AlignVCenter));
}

} // namespace tolvo
