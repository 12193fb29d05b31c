#include "presentation/rows/metric_row_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int verticalPadding = 4;
constexpr int gap = 8;

} // namespace

MetricRowView::MetricRowView(QWidget* parent) : QLabel(parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

void MetricRowView::show(const MetricRow& row) {
    if (row == row_)
        return;
    row_ = row;
    setAccessibleName(toQString(row.title));
    setAccessibleDescription(toQString(row.value));
    updateGeometry();
    update();
}

QSize MetricRowView::sizeHint() const {
    return {200, fontMetrics().height() + 2 * verticalPadding};
}

int MetricRowView::heightForWidth(int width) const {
    return sizeHint().height() + (needsTwoLines(width) ? fontMetrics().height() : 0);
}

bool MetricRowView::needsTwoLines(int width) const {
    return fontMetrics().horizontalAdvance(toQString(row_.title)) + gap + valueWidth() > width;
}

int MetricRowView::valueWidth() const {
    return QFontMetrics(textFont(TextStyle::Headline, *this)).horizontalAdvance(toQString(row_.value)) + 1;
}

QRect MetricRowView::placed(const QRect& part) const {
    return QStyle::visualRect(layoutDirection(), rect(), part);
}

void MetricRowView::paintTitleAndValue(QPainter& painter, const QRect& title, const QRect& value) const {
    const auto leading = visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter);
    const auto trailing = visualAlignment(*this, Qt::AlignRight | Qt::AlignVCenter);
    // A number with its unit is written from left to right by every reader.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setPen(toneColor(Tone::Secondary, palette()));
    painter.drawText(placed(title), static_cast<int>(leading),
                     fontMetrics().elidedText(toQString(row_.title), Qt::ElideRight, title.width()));
    painter.setPen(toneColor(Tone::Primary, palette()));
    painter.setFont(textFont(TextStyle::Headline, *this));
    drawTabularText(painter, placed(value), trailing, toQString(row_.value));
}

void MetricRowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (needsTwoLines(width())) {
        const int half = height() / 2;
        paintTitleAndValue(painter, QRect(0, 0, width(), half), QRect(0, half, width(), height() - half));
        return;
    }
    const int titleWidth = width() - gap - valueWidth();
    paintTitleAndValue(painter, QRect(0, 0, titleWidth, height()),
                       QRect(titleWidth, 0, width() - titleWidth, height()));
}

} // namespace tolvo
