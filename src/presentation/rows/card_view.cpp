#include "presentation/rows/card_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"

#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int styleFrame = 3;

} // namespace

CardView::CardView(std::string_view title, QWidget* parent) : QGroupBox(parent), rows_(new QVBoxLayout(this)) {
    // The toolkit's style adds a frame of its own to these.
    rows_->setContentsMargins(spacing::inside - styleFrame, spacing::item - styleFrame, spacing::inside - styleFrame,
                              spacing::item - styleFrame);
    rows_->setSpacing(0);
    if (title.empty())
        return;
    setAccessibleName(toQString(title));
    auto* label = makeLabel(title, TextStyle::Headline, this);
    label->setContentsMargins(0, 2, 0, 4);
    rows_->addWidget(label);
}

void CardView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paintCard(painter, rect(), palette());
}

} // namespace tolvo
