#include "presentation/wifi_radar/radar_face_layers_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"
#include "presentation/wifi_radar/radar_sweep_shape.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>

namespace tolvo {

namespace {

constexpr double margin = 2;
constexpr double outlineOpacity = 0.4;
constexpr double ringOpacity = 0.22;
constexpr double crossOpacity = 0.16;
/// Shares of the disc's radius.
constexpr double centreHalfWidth = 0.64;
constexpr double centreHalfHeight = 0.5;
constexpr double symbolShare = 0.17;
constexpr double scoreShare = 0.36;
constexpr int smallestMessagePixels = 10;

QPixmap makePixmap(const QSizeF& size, double devicePixelRatio, const QColor& ground) {
    QPixmap pixmap((size * devicePixelRatio).toSize());
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(ground);
    return pixmap;
}

void paintDisc(QPainter& painter, const QRectF& disc) {
    QRadialGradient gradient(disc.center(), disc.width() / 2);
    gradient.setColorAt(0, 0x1C3230);
    gradient.setColorAt(0.6, 0x132020);
    gradient.setColorAt(1, 0x0C1314);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(disc);
}

void paintRingsAndCross(QPainter& painter, const QRectF& disc) {
    const QColor green = toneColor(Tone::Green, darkGroundPalette());
    const double radius = disc.width() / 2;
    painter.setBrush(Qt::NoBrush);
    for (const double share : radarRings) {
        painter.setPen(withOpacity(green, share < 1 ? ringOpacity : outlineOpacity));
        painter.drawEllipse(disc.center(), radius * share, radius * share);
    }
    painter.setPen(withOpacity(green, crossOpacity));
    painter.drawLine(QPointF(disc.left(), disc.center().y()), QPointF(disc.right(), disc.center().y()));
    painter.drawLine(QPointF(disc.center().x(), disc.top()), QPointF(disc.center().x(), disc.bottom()));
}

/// As large as the reader likes it, but no larger than what lets the whole text in.
QFont fittingFont(QFont font, const QRectF& rect, const QString& text) {
    for (int pixels = QFontInfo(font).pixelSize(); pixels > smallestMessagePixels; --pixels) {
        font.setPixelSize(pixels);
        if (QFontMetricsF(font).boundingRect(rect, Qt::TextWordWrap, text).height() <= rect.height())
            break;
    }
    return font;
}

/// From the top of the rectangle down; each part takes its height off it.
class CentreColumn {
public:
    CentreColumn(QPainter& painter, QRectF rect) : painter_(painter), rect_(rect) {}

    void paintSymbol(std::string_view name, double side, const QColor& color) {
        drawSymbol(painter_, name, QRectF(rect_.center().x() - side / 2, rect_.top(), side, side), color);
        rect_.setTop(rect_.top() + side);
    }
    void paintText(const QFont& font, const QColor& color, int flags, const QString& text) {
        painter_.setFont(font);
        painter_.setPen(color);
        QRectF painted;
        painter_.drawText(rect_, flags | Qt::AlignHCenter | Qt::AlignTop, text, &painted);
        rect_.setTop(painted.bottom());
    }
    const QRectF& rest() const { return rect_; }

private:
    QPainter& painter_;
    QRectF rect_;
};

QFont scoreFont(const RadarFaceLook& look, double radius) {
    QFont font = look.font;
    font.setPixelSize(std::max(1, static_cast<int>(radius * scoreShare)));
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

QRectF radarDisc(const QSize& size) {
    const double side = std::max(0.0, std::min(size.width(), size.height()) - 2 * margin);
    QRectF disc(0, 0, side, side);
    disc.moveCenter(QRectF(QPointF(), size).center());
    return disc;
}

QPixmap radarGround(const RadarFaceLook& look) {
    QPixmap pixmap = makePixmap(look.size, look.devicePixelRatio, look.surroundings);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF disc = radarDisc(look.size);
    paintDisc(painter, disc);
    paintRingsAndCross(painter, disc);
    return pixmap;
}

void paintRadarSweep(QPainter& painter, const QRectF& disc, double degrees, const QColor& color) {
    // Qt counts angles against the clock.
    QPainterPath wedge(disc.center());
    wedge.arcTo(disc, -degrees, -radarSweepShape.sweepDegrees);
    const QPointF end = wedge.currentPosition();
    wedge.closeSubpath();
    QPainterPath edge;
    edge.arcMoveTo(disc, -degrees);
    QLinearGradient gradient(end, edge.currentPosition());
    gradient.setColorAt(0, withOpacity(color, radarSweepShape.leadingOpacity));
    gradient.setColorAt(1, withOpacity(color, radarSweepShape.trailingOpacity));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(wedge, gradient);
}

QRectF radarCentreRect(const QSize& size) {
    const QRectF disc = radarDisc(size);
    const double radius = disc.width() / 2;
    QRectF rect(0, 0, 2 * centreHalfWidth * radius, 2 * centreHalfHeight * radius);
    rect.moveCenter(disc.center());
    return rect.toAlignedRect();
}

QPixmap radarCentrePicture(const RadarFaceLook& look, const RadarCentre& centre) {
    const QRectF rect(QPointF(), radarCentreRect(look.size).size());
    QPixmap pixmap = makePixmap(rect.size(), look.devicePixelRatio, Qt::transparent);
    QPainter painter(&pixmap);
    const double radius = radarDisc(look.size).width() / 2;
    const QColor white = toneColor(Tone::Primary, darkGroundPalette());
    CentreColumn column(painter, rect.adjusted(0, radius * 0.06, 0, 0));
    column.paintSymbol(centre.symbolName, radius * symbolShare, toneColor(centre.color, darkGroundPalette()));
    column.paintText(scoreFont(look, radius), white, Qt::TextSingleLine, toQString(centre.score));
    const QString message = toQString(centre.coverageMessage);
    column.paintText(fittingFont(look.font, column.rest(), message), withOpacity(white, 0.85), Qt::TextWordWrap,
                     message);
    return pixmap;
}

} // namespace tolvo
