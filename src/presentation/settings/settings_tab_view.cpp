#include "presentation/settings/settings_tab_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"

#include <QAccessibleWidget>
#include <QPainter>
#include <QStyle>

namespace tolvo {

namespace {

constexpr int symbolSize = 15;
constexpr int gap = 6;
constexpr int padding = 7;

/// The toolkit knows tabs only in its own bar of them.
class AccessibleTab final : public QAccessibleWidget {
public:
    explicit AccessibleTab(SettingsTabView* tab) : QAccessibleWidget(tab, QAccessible::PageTab), tab_(tab) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tab_->isSelected();
        return state;
    }
    QStringList actionNames() const override { return QStringList(pressAction()) + QAccessibleWidget::actionNames(); }
    void doAction(const QString& action) override {
        if (action == pressAction())
            tab_->click();
        else
            QAccessibleWidget::doAction(action);
    }

private:
    SettingsTabView* tab_;
};

QAccessibleInterface* makeAccessibleTab(const QString&, QObject* object) {
    auto* tab = dynamic_cast<SettingsTabView*>(object);
    return tab == nullptr ? nullptr : new AccessibleTab(tab);
}

} // namespace

SettingsTabView::SettingsTabView(QWidget* parent) : ControlView(parent) {
    static const bool isFactoryInstalled = (QAccessible::installFactory(&makeAccessibleTab), true);
    Q_UNUSED(isFactoryInstalled)
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, [this] { onSelect(); });
}

void SettingsTabView::show(const SettingsTabButton& tab) {
    const bool isSelectionOther = tab.isSelected != tab_.isSelected;
    tab_ = tab;
    setAccessibleName(toQString(tab.title));
    update();
    if (!isSelectionOther)
        return;
    QAccessible::State changed;
    changed.selected = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
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
