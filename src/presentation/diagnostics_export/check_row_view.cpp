#include "presentation/diagnostics_export/check_row_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int symbolSize = 17;
constexpr int gap = 9;
constexpr int verticalPadding = 5;
constexpr double checkedOpacity = 0.9;
constexpr double circleWidth = 1.2;
constexpr double circleOpacity = 0.3;

} // namespace

CheckRowView::CheckRowView(std::string_view text, QWidget* parent) : QLabel(toQString(text), parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    alignLeading(*this);
    const int lead = symbolSize + gap;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    setContentsMargins(isMirrored ? 0 : lead, verticalPadding, isMirrored ? lead : 0, verticalPadding);
}

void CheckRowView::showPending(std::string_view accessibilityDescription) {
    showSymbol({}, accessibilityDescription);
}

void CheckRowView::showChecked(std::string_view symbolName, std::string_view accessibilityDescription) {
    showSymbol(symbolName, accessibilityDescription);
}

void CheckRowView::showSymbol(std::string_view symbolName, std::string_view accessibilityDescription) {
    setForegroundRole(symbolName.empty() ? QPalette::PlaceholderText : QPalette::WindowText);
    setAccessibleDescription(toQString(accessibilityDescription));
    symbolName_ = symbolName;
    update();
}

void CheckRowView::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    QPainter painter(this);
    const QRect symbol(0, (height() - symbolSize) / 2, symbolSize, symbolSize);
    const QRectF placed = QStyle::visualRect(layoutDirection(), rect(), symbol);
    if (!symbolName_.empty()) {
        drawSymbol(painter, symbolName_, placed, withOpacity(toneColor(Tone::Green, palette()), checkedOpacity));
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(withOpacity(toneColor(Tone::White, palette()), circleOpacity), circleWidth));
    painter.drawEllipse(placed.adjusted(circleWidth, circleWidth, -circleWidth, -circleWidth));
}

} // namespace tolvo
