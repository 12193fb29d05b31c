#include "presentation/channel_scan/congestion_row_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/badge_view.h"
#include "presentation/rows/linear_progress_view.h"
#include "presentation/rows/style_view.h"

#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int usualWidth = 600;
constexpr int columnGap = 16;
constexpr int tagGap = 6;
constexpr int verticalPadding = 4;
constexpr int barThickness = 8;
constexpr double barOpacity = 0.82;
constexpr double tagGroundOpacity = 0.22;

int textWidth(TextStyle style, const std::string& text, const QWidget& widget) {
    return QFontMetrics(textFont(style, widget)).horizontalAdvance(toQString(text)) + 1;
}

int tagsWidth(const ChannelScanCongestionRow& row, const QWidget& widget) {
    const QFontMetrics metrics(badgeFont(widget));
    int width = 0;
    for (const ChannelScanMarkerTag& tag : row.tags)
        width += badgeSize(metrics, tag.text).width() + (width > 0 ? tagGap : 0);
    return width;
}

} // namespace

CongestionColumns CongestionColumns::fitting(const ChannelScanCongestionRow& row, const QWidget& widget) const {
    return {std::max(titleWidth, textWidth(TextStyle::Headline, row.title, widget)),
            std::max(tagsWidth, tolvo::tagsWidth(row, widget)),
            std::max(scoreWidth, textWidth(TextStyle::Body, row.score, widget)),
            std::max(countWidth, textWidth(TextStyle::Body, row.count, widget))};
}

CongestionRowView::CongestionRowView(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CongestionRowView::show(const ChannelScanCongestionRow& row, const CongestionColumns& columns) {
    if (row == row_ && columns == columns_)
        return;
    row_ = row;
    columns_ = columns;
    setAccessibleName(toQString(row.title));
    setAccessibleDescription(toQString(row.spokenValue));
    update();
}

QSize CongestionRowView::sizeHint() const {
    return {usualWidth, badgeSize(QFontMetrics(badgeFont(*this)), "").height() + 2 * verticalPadding};
}

QRect CongestionRowView::placed(int left, int width) const {
    return QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, width, height()));
}

void CongestionRowView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    painter.setFont(textFont(TextStyle::Headline, *this));
    painter.setPen(toneColor(Tone::Primary, palette()));
    paintText(painter, placed(0, columns_.titleWidth), Qt::AlignLeft, row_.title);
    const int barLeft = paintTags(painter, columns_.titleWidth + columnGap);
    const int countLeft = width() - columns_.countWidth;
    const int scoreLeft = countLeft - columnGap - columns_.scoreWidth;
    painter.setFont(textFont(TextStyle::Body, *this));
    painter.setPen(toneColor(Tone::Primary, palette()));
    paintText(painter, placed(scoreLeft, columns_.scoreWidth), Qt::AlignRight, row_.score);
    painter.setPen(toneColor(Tone::Secondary, palette()));
    paintText(painter, placed(countLeft, columns_.countWidth), Qt::AlignRight, row_.count);
    QRectF bar = placed(barLeft, scoreLeft - columnGap - barLeft);
    bar.adjust(0, (height() - barThickness) / 2.0, 0, -(height() - barThickness) / 2.0);
    paintBar(painter, bar, row_.barShare, withOpacity(toneColor(row_.barColor, palette()), barOpacity), *this);
}

int CongestionRowView::paintTags(QPainter& painter, int left) const {
    painter.setFont(badgeFont(*this));
    int tagLeft = left;
    for (const ChannelScanMarkerTag& tag : row_.tags) {
        const QSize size = badgeSize(painter.fontMetrics(), tag.text);
        QRect ground = placed(tagLeft, size.width());
        ground.setTop((height() - size.height()) / 2);
        ground.setHeight(size.height());
        paintBadge(painter, ground, {tag.text, tag.accentColor}, tagGroundOpacity, palette());
        tagLeft += size.width() + tagGap;
    }
    return columns_.tagsWidth > 0 ? left + columns_.tagsWidth + columnGap : left;
}

void CongestionRowView::paintText(QPainter& painter, const QRect& rect, Qt::Alignment side,
                                  const std::string& text) const {
    drawTabularText(painter, rect, visualAlignment(*this, side | Qt::AlignVCenter), toQString(text));
}

} // namespace tolvo
