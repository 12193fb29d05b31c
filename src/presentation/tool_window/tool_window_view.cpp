#include "presentation/tool_window/tool_window_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/scroll_bar_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_ground_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QShowEvent>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int margin = 20;
constexpr int headerSymbolSide = 42;

/// The scroll bar stands in the margin, which layouts don't mirror by themselves.
QMargins bodyMargins(const QScrollArea& scroll) {
    const int beside = margin - scroll.verticalScrollBar()->sizeHint().width();
    const bool isMirrored = scroll.layoutDirection() == Qt::RightToLeft;
    return {isMirrored ? beside : margin, 0, isMirrored ? margin : beside, margin};
}

} // namespace

ToolWindowView::ToolWindowView(const ToolWindowFrameContent& frame, QWidget* parent)
    : QWidget(parent), header_(new QHBoxLayout), fixedRows_(new QVBoxLayout), invitation_(new QVBoxLayout) {
    addHeader(frame);
    fixedRows_->setSpacing(spacing::group);
    emptyState_ = makeEmptyState(frame);
    scroll_ = makeScrollArea();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, margin, 0, 0);
    layout->setSpacing(spacing::inside);
    for (QBoxLayout* part : std::initializer_list<QBoxLayout*>{header_, fixedRows_, emptyState_}) {
        part->setContentsMargins(margin, 0, margin, 0);
        layout->addLayout(part);
    }
    layout->setAlignment(emptyState_, Qt::AlignVCenter);
    layout->addWidget(scroll_, 1);
    setAccessibleName(toQString(frame.title));
}

void ToolWindowView::addHeader(const ToolWindowFrameContent& frame) {
    auto* symbol = new SymbolGroundView(headerSymbolSide, this);
    symbol->show(frame.symbolName, Tone::Blue);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(makeWrappedLabel(frame.title, TextStyle::Title, this));
    texts->addWidget(makeWrappedLabel(frame.subtitle, TextStyle::Body, this, QPalette::PlaceholderText));
    header_->setSpacing(spacing::inside);
    header_->addWidget(symbol);
    header_->addLayout(texts, 1);
}

QVBoxLayout* ToolWindowView::makeEmptyState(const ToolWindowFrameContent& frame) {
    emptyTitle_ = makeWrappedLabel(frame.emptyTitle, TextStyle::Title, this);
    emptyText_ = makeWrappedLabel(frame.emptyText, TextStyle::Body, this, QPalette::PlaceholderText);
    auto* column = new QVBoxLayout;
    column->setSpacing(spacing::item);
    for (QLabel* label : {emptyTitle_, emptyText_}) {
        label->setAlignment(Qt::AlignCenter);
        column->addWidget(label);
    }
    invitation_->setContentsMargins(0, spacing::item, 0, 0);
    column->addLayout(invitation_);
    return column;
}

QScrollArea* ToolWindowView::makeScrollArea() {
    auto* content = new QWidget;
    body_ = new QVBoxLayout(content);
    body_->setSpacing(spacing::group);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // It keeps its place, so that nothing moves when the content grows.
    scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    scroll->setVerticalScrollBar(new ScrollBarView(scroll));
    body_->setContentsMargins(bodyMargins(*scroll));
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    scroll->viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    return scroll;
}

void ToolWindowView::setInvitationVisible(bool isVisible) {
    emptyTitle_->setVisible(isVisible);
    emptyText_->setVisible(isVisible);
    scroll_->setVisible(!isVisible);
    static_cast<QVBoxLayout*>(layout())->setStretchFactor(emptyState_, isVisible ? 1 : 0);
}

void ToolWindowView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Last in order, so that it is read out after the controls above it.
    scroll_->raise();
    // No control is chosen yet: the first Tab goes to the first one.
    if (!event->spontaneous())
        setFocus(Qt::OtherFocusReason);
}

void ToolWindowView::keyPressEvent(QKeyEvent* event) {
    // Not through the application, which would bring what the bar ignores back here, and again.
    static_cast<QObject*>(scroll_->verticalScrollBar())->event(event);
}

} // namespace tolvo
