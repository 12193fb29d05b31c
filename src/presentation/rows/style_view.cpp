#include "presentation/rows/style_view.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

/// A colour on light and on dark. The light ones have a contrast of at least 3:1 on white, as graphics and bold text
/// need it.
QColor shade(bool dark, QRgb onLight, QRgb onDark) {
    return QColor(dark ? onDark : onLight);
}

bool hasEqualDigits(const QFontMetricsF& metrics) {
    const double zero = metrics.horizontalAdvance(QLatin1Char('0'));
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (std::abs(metrics.horizontalAdvance(QLatin1Char(digit)) - zero) > 0.01)
            return false;
    }
    return true;
}

double widestDigit(const QFontMetricsF& metrics) {
    double widest = 0;
    for (char digit = '0'; digit <= '9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QLatin1Char(digit)));
    return widest;
}

} // namespace

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightnessF() < 0.5F;
}

QColor toneColor(Tone tone, const QPalette& palette) {
    const bool dark = isDark(palette);
    switch (tone) {
    case Tone::Primary:
        return palette.color(QPalette::WindowText);
    case Tone::Secondary:
        return palette.color(QPalette::PlaceholderText);
    case Tone::Dimmed:
        return dark ? withOpacity(QColor(0xF2F4F7), 0.45) : QColor(0x858E9A);
    case Tone::White:
        return shade(dark, 0x4A5563, 0xF2F4F7);
    case Tone::Green:
        return shade(dark, 0x1E8E4A, 0x3DD178);
    case Tone::Yellow:
        return shade(dark, 0xA87B00, 0xF5CF47);
    case Tone::Orange:
        return shade(dark, 0xC25E00, 0xFF9F40);
    case Tone::Red:
        return shade(dark, 0xCF2F2F, 0xFF6B63);
    case Tone::Blue:
        return shade(dark, 0x1769E0, 0x5CA6FF);
    case Tone::Gray:
        return shade(dark, 0x6B7480, 0xA0A8B3);
    }
    std::unreachable();
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

const QPalette& darkGroundPalette() {
    static const QPalette colors = [] {
        QPalette palette;
        palette.setColor(QPalette::Window, 0x101619);
        palette.setColor(QPalette::WindowText, 0xF2F4F7);
        palette.setColor(QPalette::PlaceholderText, 0xA9B3BE);
        return palette;
    }();
    return colors;
}

QFont textFont(TextStyle style, const QWidget& widget) {
    QFont font = widget.font();
    const double size = font.pointSizeF() > 0 ? font.pointSizeF() : 10;
    switch (style) {
    case TextStyle::Figure:
        font.setPointSizeF(size * 1.9);
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::Title:
        font.setPointSizeF(size * 1.3);
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::Headline:
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::Body:
        break;
    case TextStyle::Caption:
        font.setPointSizeF(size * 0.9);
        break;
    }
    return font;
}

Qt::Alignment visualAlignment(const QWidget& widget, Qt::Alignment alignment) {
    return QStyle::visualAlignment(widget.layoutDirection(), alignment) | Qt::AlignAbsolute;
}

void drawTabularText(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text) {
    const QFontMetricsF metrics(painter.font());
    const double digitWidth = widestDigit(metrics);
    const auto advance = [&](QChar c) { return c.isDigit() ? digitWidth : metrics.horizontalAdvance(c); };
    double width = 0;
    for (const QChar c : text)
        width += advance(c);
    const bool isPlain = std::ranges::all_of(text, [](QChar c) { return c.unicode() < 128; });
    if (!isPlain || hasEqualDigits(metrics) || width > rect.width()) {
        painter.drawText(rect, static_cast<int>(alignment) | Qt::TextSingleLine,
                         metrics.elidedText(text, Qt::ElideRight, rect.width()));
        return;
    }
    double x = (alignment & Qt::AlignRight) != 0 ? rect.right() - width : rect.left();
    for (const QChar c : text) {
        painter.drawText(QRectF(x, rect.top(), advance(c), rect.height()), Qt::AlignCenter | Qt::TextDontClip, c);
        x += advance(c);
    }
}

void paintCard(QPainter& painter, const QRectF& rect, const QPalette& palette) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(withOpacity(palette.color(QPalette::WindowText), isDark(palette) ? 0.06 : 0.08));
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRoundedRect(rect.adjusted(0.5, 0.5, -0.5, -0.5), cardRadius, cardRadius);
}

void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius, radius);
}

} // namespace tolvo
