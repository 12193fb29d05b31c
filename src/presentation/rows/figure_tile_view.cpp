#include "presentation/rows/figure_tile_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int usualWidth = 200;
constexpr int horizontalPadding = 14;
constexpr int verticalPadding = 11;
constexpr int symbolGap = 6;
constexpr int lineGap = 2;
constexpr int accentWidth = 4;

QString described(const FigureTile& tile) {
    QStringList parts{toQString(tile.value)};
    for (const std::string& caption : tile.captions)
        parts << toQString(caption);
    return parts.join(QStringLiteral(", "));
}

int lineHeight(TextStyle style, const QWidget& widget) {
    return QFontMetrics(textFont(style, widget)).height();
}

} // namespace

FigureTileView::FigureTileView(QWidget* parent) : QLabel(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FigureTileView::show(const FigureTile& tile) {
    if (tile == tile_)
        return;
    const bool isSameHeight = tile.captions.size() == tile_.captions.size();
    tile_ = tile;
    setAccessibleName(toQString(tile.spokenTitle.empty() ? tile.title : tile.spokenTitle));
    setAccessibleDescription(described(tile));
    if (!isSameHeight)
        updateGeometry();
    update();
}

QSize FigureTileView::sizeHint() const {
    const int captions = static_cast<int>(tile_.captions.size()) * (lineHeight(TextStyle::Caption, *this) + lineGap);
    return {usualWidth, lineHeight(TextStyle::Headline, *this) + lineGap + lineHeight(TextStyle::Figure, *this) +
                            captions + 2 * verticalPadding};
}

QRect FigureTileView::placed(const QRect& part) const {
    return QStyle::visualRect(layoutDirection(), rect(), part);
}

void FigureTileView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // A number with its unit is written from left to right by every reader.
    painter.setLayoutDirection(Qt::LayoutDirectionAuto);
    paintCard(painter, rect(), palette());
    paintAccent(painter);
    QRect line(horizontalPadding, verticalPadding, width() - 2 * horizontalPadding,
               lineHeight(TextStyle::Headline, *this));
    paintTitle(painter, line);
    line.translate(0, line.height() + lineGap);
    line.setHeight(lineHeight(TextStyle::Figure, *this));
    painter.setFont(textFont(TextStyle::Figure, *this));
    painter.setPen(toneColor(tile_.valueColor, palette()));
    drawTabularText(painter, placed(line), visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter),
                    toQString(tile_.value));
    line.translate(0, line.height() + lineGap);
    paintCaptions(painter, line);
}

void FigureTileView::paintAccent(QPainter& painter) const {
    if (!tile_.accentColor)
        return;
    QPainterPath card;
    card.addRoundedRect(rect(), cardRadius, cardRadius);
    painter.save();
    painter.setClipPath(card);
    painter.fillRect(placed(QRect(0, 0, accentWidth, height())), toneColor(*tile_.accentColor, palette()));
    painter.restore();
}

void FigureTileView::paintTitle(QPainter& painter, const QRect& line) const {
    const QColor color = toneColor(tile_.accentColor.value_or(Tone::Secondary), palette());
    int leading = 0;
    if (!tile_.symbolName.empty()) {
        const int side = line.height();
        drawSymbol(painter, tile_.symbolName, placed(QRect(line.left(), line.top(), side, side)),
                   toneColor(tile_.valueColor, palette()));
        leading = side + symbolGap;
    }
    const QRect text = line.adjusted(leading, 0, 0, 0);
    painter.setFont(textFont(TextStyle::Headline, *this));
    painter.setPen(color);
    painter.drawText(placed(text), static_cast<int>(visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter)),
                     painter.fontMetrics().elidedText(toQString(tile_.title), Qt::ElideRight, text.width()));
}

void FigureTileView::paintCaptions(QPainter& painter, QRect line) const {
    painter.setFont(textFont(TextStyle::Caption, *this));
    painter.setPen(toneColor(Tone::Secondary, palette()));
    line.setHeight(painter.fontMetrics().height());
    for (const std::string& caption : tile_.captions) {
        drawTabularText(painter, placed(line), visualAlignment(*this, Qt::AlignLeft | Qt::AlignVCenter),
                        toQString(caption));
        line.translate(0, line.height() + lineGap);
    }
}

} // namespace tolvo
