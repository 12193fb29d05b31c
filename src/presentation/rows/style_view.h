#pragma once

#include "presentation/rows/tone.h"

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRectF>

class QPainter;
class QWidget;

namespace tolvo {

// What all views share: colours, type sizes and distances.

/// Distances in points.
namespace spacing {
inline constexpr int margin = 16;
inline constexpr int group = 10;
inline constexpr int inside = 12;
inline constexpr int item = 8;
} // namespace spacing

inline constexpr double cardRadius = 10;
inline constexpr double controlRadius = 7;

enum class TextStyle { Figure, Title, Headline, Body, Caption };

bool isDark(const QPalette& palette);
/// The shade that can be read on the palette's window colour.
QColor toneColor(Tone tone, const QPalette& palette);
QColor withOpacity(QColor color, double opacity);
/// For a ground that is dark in every theme.
const QPalette& darkGroundPalette();

QFont textFont(TextStyle style, const QWidget& widget);
/// Left and right as they are on the screen, for the reader's direction.
Qt::Alignment visualAlignment(const QWidget& widget, Qt::Alignment alignment);
/// A line of text with all digits equally wide, so that changing numbers stand still.
void drawTabularText(QPainter& painter, const QRectF& rect, Qt::Alignment alignment, const QString& text);

void paintCard(QPainter& painter, const QRectF& rect, const QPalette& palette);
/// The ring around the control that has the keyboard.
void paintFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

} // namespace tolvo
