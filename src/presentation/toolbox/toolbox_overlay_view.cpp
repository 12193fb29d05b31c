#include "presentation/toolbox/toolbox_overlay_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/panel/panel_controller.h"
#include "presentation/rows/control_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_view.h"
#include "presentation/toolbox/toolbox_content.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int symbolSize = 22;
constexpr int groundSize = 38;
constexpr int chevronSize = 13;
constexpr int padding = 11;
constexpr int textLeft = 2 * padding + groundSize;
constexpr int usualWidth = 368;

/// A tool to open: its symbol, its name, and what it is for on at least two lines.
class ToolRowView final : public ControlView {
public:
    ToolRowView(const ToolboxToolRow& row, QWidget* parent) : ControlView(parent), row_(row) {
        setAccessibleName(toQString(row.title));
        setAccessibleDescription(toQString(row.subtitle));
        QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }

    QSize sizeHint() const override { return {usualWidth, heightForWidth(usualWidth)}; }
    QSize minimumSizeHint() const override { return {0, 0}; }
    int heightForWidth(int width) const override {
        const QFontMetrics caption(textFont(TextStyle::Caption, *this));
        const int titleHeight = QFontMetrics(textFont(TextStyle::Headline, *this)).height();
        const QRect texts(0, 0, width - textLeft - 2 * padding - chevronSize, height());
        const QRect subtitle = caption.boundingRect(texts, Qt::TextWordWrap, accessibleDescription());
        return titleHeight + std::max(subtitle.height(), 2 * caption.height()) + 2 * padding;
    }

protected:
    void paintControl(QPainter& painter) override {
        paintCard(painter, rect(), palette());
        painter.setPen(Qt::NoPen);
        painter.setBrush(withOpacity(toneColor(Tone::Primary, palette()), groundOpacity() * 0.6));
        painter.drawRoundedRect(rect(), cardRadius, cardRadius);
        paintSymbols(painter);
        paintTexts(painter);
    }
    double focusRadius() const override { return cardRadius; }

private:
    QRect placed(const QRect& part) const { return QStyle::visualRect(layoutDirection(), rect(), part); }

    void paintSymbols(QPainter& painter) const {
        const QColor tint = toneColor(Tone::Blue, palette());
        const QRect ground = placed({padding, (height() - groundSize) / 2, groundSize, groundSize});
        painter.setBrush(withOpacity(tint, 0.14));
        painter.drawRoundedRect(ground, controlRadius + 2, controlRadius + 2);
        QRectF symbol(0, 0, symbolSize, symbolSize);
        symbol.moveCenter(QRectF(ground).center());
        drawSymbol(painter, row_.symbolName, symbol, tint);
        const QRect chevron(width() - padding - chevronSize, (height() - chevronSize) / 2, chevronSize, chevronSize);
        drawSymbol(painter, layoutDirection() == Qt::RightToLeft ? "chevron.left" : "chevron.right", placed(chevron),
                   toneColor(Tone::Gray, palette()));
    }

    void paintTexts(QPainter& painter) const {
        const QRect texts =
            placed(QRect(textLeft, padding, width() - textLeft - 2 * padding - chevronSize, height() - 2 * padding));
        const auto leading = static_cast<int>(visualAlignment(*this, Qt::AlignLeft));
        painter.setLayoutDirection(Qt::LayoutDirectionAuto);
        const QFont titleFont = textFont(TextStyle::Headline, *this);
        const int titleHeight = QFontMetrics(titleFont).height();
        painter.setFont(titleFont);
        painter.setPen(toneColor(Tone::Primary, palette()));
        painter.drawText(texts, leading | Qt::AlignTop, accessibleName());
        painter.setFont(textFont(TextStyle::Caption, *this));
        painter.setPen(toneColor(Tone::Secondary, palette()));
        painter.drawText(texts.adjusted(0, titleHeight, 0, 0), leading | Qt::AlignTop | Qt::TextWordWrap,
                         accessibleDescription());
    }

    const ToolboxToolRow& row_;
};

} // namespace

ToolboxOverlayView::ToolboxOverlayView(PanelController& controller, QWidget* parent)
    : OverlayView(controller, PanelRoute::Toolbox, toolboxHeader, parent) {
    body().setSpacing(spacing::item);
    body().addWidget(makeLabel(toolboxSectionTitle, TextStyle::Headline, this));
    for (const ToolboxToolRow& row : toolboxRows()) {
        auto* view = new ToolRowView(row, this);
        QObject::connect(view, &QPushButton::clicked, this,
                         [&controller, action = row.action] { controller.performToolboxAction(action); });
        body().addWidget(view);
    }
    body().addStretch();
}

} // namespace tolvo
