#include "presentation/rows/symbol_view.h"

#include "platform/qt/qt_text.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>
#include <string>

/// A static library's resources are not there by themselves. The macro wants the global namespace.
static void loadResources() {
    Q_INIT_RESOURCE(resources);
}

namespace tolvo {

namespace {

QString resourcePath(std::string_view name) {
    static const bool isLoaded = (loadResources(), true);
    return isLoaded ? QStringLiteral(":/tolvo/%1.svg").arg(toQString(name)) : QString();
}

QString symbolPath(std::string_view name) {
    return resourcePath(std::string("symbols/").append(name));
}

/// The shape filled with the colour, wherever it is opaque.
QPixmap tinted(const QString& path, const QSize& pixels, const QColor& color) {
    QSvgRenderer renderer(path);
    if (!renderer.isValid())
        return {};
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(QPointF(), pixels));
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

} // namespace

bool hasSymbol(std::string_view name) {
    return QFile::exists(symbolPath(name));
}

void drawSymbol(QPainter& painter, std::string_view name, const QRectF& rect, const QColor& color) {
    const double scale = painter.device()->devicePixelRatioF() * std::abs(painter.worldTransform().m11());
    const QSize pixels = (rect.size() * scale).toSize();
    const QString key = QStringLiteral("%1 %2 %3").arg(toQString(name)).arg(pixels.width()).arg(color.rgba());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = tinted(symbolPath(name), pixels, color);
        QPixmapCache::insert(key, pixmap);
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect, pixmap, pixmap.rect());
}

bool drawImage(QPainter& painter, std::string_view name, const QRectF& rect) {
    QSvgRenderer renderer(resourcePath(name));
    if (!renderer.isValid())
        return false;
    renderer.render(&painter, rect);
    return true;
}

} // namespace tolvo
