#include "presentation/rows/metric_trend_row_view.h"

#include "presentation/rows/sparkline_view.h"
#include "presentation/rows/style_view.h"

#include <QPainter>

#include <algorithm>

namespace tolvo {

namespace {

/// Columns in the widths of a digit, so that they grow with the type.
constexpr int titleDigits = 12;
constexpr int valueDigits = 11;
/// What they take at most; in large type the trend line gives way.
constexpr double largestTitleShare = 0.48;
constexpr double largestValueShare = 0.44;
constexpr int lineHeight = 18;

} // namespace

MetricTrendRowView::MetricTrendRowView(QWidget* parent) : MetricRowView(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void MetricTrendRowView::show(const MetricTrendRow& row) {
    if (row == row_)
        return;
    row_ = row;
    MetricRowView::show(MetricRow{row.title, row.value});
    update();
}

void MetricTrendRowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const int digit = fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const int titleWidth = std::min(titleDigits * digit, static_cast<int>(width() * largestTitleShare));
    const int valueWidth = std::min(valueDigits * digit, static_cast<int>(width() * largestValueShare));
    const QRect line(titleWidth, (height() - lineHeight) / 2, width() - titleWidth - valueWidth, lineHeight);
    paintSparkline(painter, placed(line), row_.samples, row_.yDomain, toneColor(row_.strokeColor, palette()));
    paintTitleAndValue(painter, QRect(0, 0, titleWidth, height()),
                       QRect(width() - valueWidth, 0, valueWidth, height()));
}

} // namespace tolvo
