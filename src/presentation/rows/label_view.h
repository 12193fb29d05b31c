#pragma once

#include "presentation/rows/style_view.h"

#include <QPalette>

#include <string_view>

class QLabel;
class QWidget;

namespace tolvo {

/// A text as it is, without markup, at the side where its reader begins to read, in whatever language it is.
QLabel* makeLabel(std::string_view text, TextStyle style, QWidget* parent,
                  QPalette::ColorRole color = QPalette::WindowText);

/// The same on as many lines as it needs.
QLabel* makeWrappedLabel(std::string_view text, TextStyle style, QWidget* parent,
                         QPalette::ColorRole color = QPalette::WindowText);

/// Puts a label's text at that side.
void alignLeading(QLabel& label);

} // namespace tolvo
