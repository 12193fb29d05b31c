#include "presentation/settings/settings_tab_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int symbolSize = 15;
constexpr int gap = 6;
constexpr int padding = 7;

} // namespace

SettingsTabView::SettingsTabView(QWidget* parent) : ControlView(parent) {
    // Its chosen state is what assistive programs read as checked.
    setCheckable(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // Assistive programs set the state without a click: taken as the same request.
    connect(this, &QPushButton::toggled, this, [this](bool isSelected) {
        if (isSelected == tab_.isSelected)
            return;
        onSelect();
        setChecked(tab_.isSelected);
    });
}

void SettingsTabView::show(const SettingsTabButton& tab) {
    tab_ = tab;
    setAccessibleName(toQString(tab.title));
    setChecked(tab.isSelected);
    update();
}

QSize SettingsTabView::sizeHint() const {
    return {100, fontMetrics().height() + 2 * padding};
}

void SettingsTabView::paintControl(QPainter& painter) {
    const QColor tint = toneColor(tab_.isSelected ? Tone::Blue : Tone::Secondary, palette());
    painter.setPen(Qt::NoPen);
    painter.setBrush(tab_.isSelected ? withOpacity(tint, 0.15)
                                     : withOpacity(toneColor(Tone::Primary, palette()), groundOpacity()));
    painter.drawRoundedRect(rect(), controlRadius, controlRadius);
    QFont font = textFont(tab_.isSelected ? TextStyle::Headline : TextStyle::Body, *this);
    painter.setFont(font);
    const int textWidth = QFontMetrics(font).horizontalAdvance(accessibleName());
    const int left = (width() - symbolSize - gap - textWidth) / 2;
    const auto placed = [this](const QRect& part) { return QStyle::visualRect(layoutDirection(), rect(), part); };
    drawSymbol(painter, tab_.symbolName, placed({left, (height() - symbolSize) / 2, symbolSize, symbolSize}), tint);
    painter.setPen(tint);
    painter.drawText(placed({left + symbolSize + gap, 0, textWidth + 1, height()}), Qt::AlignCenter, accessibleName());
}

} // namespace tolvo
