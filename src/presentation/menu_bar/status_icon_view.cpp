#include "presentation/menu_bar/status_icon_view.h"

#include "presentation/rows/symbol_view.h"

#include <QImage>
#include <QPainter>

#include <cstring>
#include <utility>

namespace tolvo {

namespace {

constexpr double canvasSide = 18;
/// The badge stands at the lower right and hangs a little below the canvas.
constexpr double badgeSide = 10.08;
constexpr double badgeX = 8.72;
constexpr double badgeBelow = 0.8;
constexpr int scales[] = {1, 2, 3};

/// Colours that stand out from a panel of either shade.
QColor badgeColor(Tone tone, PanelShade shade) {
    const bool isDark = shade == PanelShade::Dark;
    switch (tone) {
    case Tone::Green:
        return isDark ? QColor(0x32D163) : QColor(0x1FA24A);
    case Tone::Orange:
    case Tone::Yellow:
        return isDark ? QColor(0xFF9F2E) : QColor(0xE07800);
    case Tone::Red:
        return isDark ? QColor(0xFF5A50) : QColor(0xD92F27);
    case Tone::Gray:
        return QColor(0x8E8E93);
    case Tone::Blue:
        return QColor(0x3E95FF);
    case Tone::Primary:
    case Tone::Secondary:
    case Tone::Dimmed:
    case Tone::White:
        return isDark ? QColor(0xF4F5F7) : QColor(0x1B2027);
    }
    std::unreachable();
}

/// A dark badge can be read on any panel when a light edge sets it off.
void paintHalo(QPainter& painter, const QRectF& badge) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xFFFFFF));
    painter.drawEllipse(badge);
}

QImage drawnAt(int scale, const StatusIconContent& content, PanelShade shade) {
    const int side = static_cast<int>(canvasSide) * scale;
    QImage canvas(side, side, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.scale(scale, scale);
    const QRectF bounds(0, 0, canvasSide, canvasSide);
    if (!drawImage(painter, "MenuBarBrandIcon", bounds) && !drawImage(painter, "BrandLogo", bounds))
        drawSymbol(painter, "wifi", bounds, badgeColor(Tone::Primary, shade));
    const QRectF badge(badgeX, canvasSide + badgeBelow - badgeSide, badgeSide, badgeSide);
    if (shade == PanelShade::Unknown)
        paintHalo(painter, badge);
    drawSymbol(painter, content.badgeSymbolName, badge, badgeColor(content.badgeColor, shade));
    return canvas;
}

RasterImage rasterImage(const QImage& image) {
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    RasterImage raster{argb.width(), argb.height(), {}};
    raster.pixels.resize(static_cast<std::size_t>(argb.width()) * static_cast<std::size_t>(argb.height()));
    std::memcpy(raster.pixels.data(), argb.constBits(), raster.pixels.size() * sizeof(std::uint32_t));
    return raster;
}

} // namespace

std::optional<ScaledImage> StatusIconView::render(const StatusIconContent& content) {
    if (!hasSymbol(content.badgeSymbolName))
        return std::nullopt;
    const PanelShade shade = panelShade_();
    if (drawn_.empty() || content != drawnContent_ || shade != drawnShade_) {
        drawn_.clear();
        for (const int scale : scales)
            drawn_.push_back(rasterImage(drawnAt(scale, content, shade)));
        drawnContent_ = content;
        drawnShade_ = shade;
    }
    return drawn_;
}

} // namespace tolvo
