#include "presentation/panel/overlay_view.h"

#include "presentation/panel/panel_controller.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/text_button_view.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <optional>

namespace tolvo {

namespace {

/// As round as the popover, so that its corners stay.
constexpr double cornerRadius = 12;

std::optional<QAbstractSlider::SliderAction> scrollingBy(int key) {
    switch (key) {
    case Qt::Key_PageDown:
        return QAbstractSlider::SliderPageStepAdd;
    case Qt::Key_PageUp:
        return QAbstractSlider::SliderPageStepSub;
    case Qt::Key_Down:
        return QAbstractSlider::SliderSingleStepAdd;
    case Qt::Key_Up:
        return QAbstractSlider::SliderSingleStepSub;
    default:
        return std::nullopt;
    }
}

QScrollArea* makeScrollArea(QWidget* content, QWidget* parent) {
    auto* scroll = new QScrollArea(parent);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return scroll;
}

} // namespace

OverlayView::OverlayView(PanelController& controller, PanelRoute route, const OverlayHeader& header, QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(spacing::margin, spacing::inside, spacing::margin, spacing::margin);
    layout->setSpacing(0);
    if (const auto back = backButton(route)) {
        auto* button = new TextButtonView(back->title, ButtonProminence::Standard, this);
        button->setBackStyle();
        QObject::connect(button, &QPushButton::clicked, this, [&controller] { controller.goBack(); });
        layout->addWidget(button);
        layout->addSpacing(spacing::item);
    }
    layout->addWidget(makeWrappedLabel(header.title, TextStyle::Title, this));
    layout->addWidget(makeWrappedLabel(header.subtitle, TextStyle::Caption, this, QPalette::PlaceholderText));
    layout->addSpacing(spacing::inside);
    auto* content = new QWidget;
    body_ = new QVBoxLayout(content);
    body_->setContentsMargins(0, 0, 0, 0);
    body_->setSpacing(spacing::group);
    scroll_ = makeScrollArea(content, this);
    layout->addWidget(scroll_, 1);
}

void OverlayView::keyPressEvent(QKeyEvent* event) {
    // Where nothing inside the body has the keyboard yet, it still scrolls.
    if (const auto scrolling = scrollingBy(event->key()))
        scroll_->verticalScrollBar()->triggerAction(*scrolling);
    else
        QWidget::keyPressEvent(event);
}

void OverlayView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(withOpacity(palette().color(QPalette::WindowText), 0.18));
    painter.setBrush(palette().window());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

} // namespace tolvo
