#pragma once

#include <QColor>
#include <QPixmap>
#include <QRectF>

#include <string_view>

class QPainter;
class QWidget;

namespace tolvo {

// The program's own pictures, by name.

bool hasSymbol(std::string_view name);
/// In one colour, at the painter's resolution, also when that is mirrored. Draws nothing when there is no such symbol.
void drawSymbol(QPainter& painter, std::string_view name, const QRectF& rect, const QColor& color);
/// In its own colours: "BrandLogo" or "MenuBarBrandIcon". Whether it is there.
bool drawImage(QPainter& painter, std::string_view name, const QRectF& rect);

} // namespace tolvo
