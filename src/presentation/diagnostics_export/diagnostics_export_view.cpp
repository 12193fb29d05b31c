#include "presentation/diagnostics_export/diagnostics_export_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/diagnostics_export/export_progress_view.h"
#include "presentation/diagnostics_export/export_ready_view.h"
#include "presentation/rows/icon_button_view.h"
#include "presentation/rows/inline_message_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/scroll_bar_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_ground_view.h"
#include "presentation/rows/symbol_view.h"
#include "presentation/rows/text_button_view.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace tolvo {

namespace {

constexpr int margin = 20;
constexpr int symbolSide = 42;

IconButtonView* makeButton(const DiagnosticsExportButton& button, QWidget* parent) {
    const std::string_view symbol = hasSymbol(button.symbolName) ? button.symbolName : button.fallbackSymbolName;
    return new IconButtonView(symbol, button.toolTip, button.toolTip, parent);
}

} // namespace

DiagnosticsExportView::DiagnosticsExportView(DiagnosticsExportController& controller, QWidget* parent)
    : QScrollArea(parent), controller_(controller) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setVerticalScrollBar(new ScrollBarView(this));
    setWidgetResizable(true);
    auto* content = new QWidget;
    // In the order in which the keyboard goes through them.
    QHBoxLayout* header = makeHeader(content);
    message_ = new InlineMessageView(content);
    message_->hide();
    pages_ = new QStackedWidget(content);
    progress_ = new ExportProgressView(pages_);
    ready_ = new ExportReadyView(pages_);
    pages_->addWidget(progress_);
    pages_->addWidget(ready_);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(spacing::margin);
    column->addLayout(header);
    column->addWidget(message_);
    column->addWidget(pages_, 1);
    setWidget(content);
}

DiagnosticsExportView::~DiagnosticsExportView() {
    controller_.close();
}

QHBoxLayout* DiagnosticsExportView::makeHeader(QWidget* content) {
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(makeWrappedLabel(diagnostics_export::title, TextStyle::Title, content));
    texts->addWidget(
        makeWrappedLabel(diagnostics_export::subtitle, TextStyle::Body, content, QPalette::PlaceholderText));
    auto* header = new QHBoxLayout;
    header->setSpacing(spacing::inside);
    auto* symbol = new SymbolGroundView(symbolSide, content);
    symbol->show(diagnostics_export::symbolName, Tone::Blue);
    header->addWidget(symbol);
    header->addLayout(texts, 1);
    header->addLayout(makeButtons(content));
    return header;
}

QHBoxLayout* DiagnosticsExportView::makeButtons(QWidget* content) {
    regenerate_ = new TextButtonView(diagnostics_export::regenerateTitle, ButtonProminence::Standard, content);
    regenerate_->setSymbol(diagnostics_export::regenerateButton.symbolName);
    regenerate_->setToolTip(toQString(diagnostics_export::regenerateButton.toolTip));
    regenerate_->hide();
    auto* copy = makeButton(diagnostics_export::copyButton, content);
    auto* share = makeButton(diagnostics_export::shareButton, content);
    QObject::connect(regenerate_, &QPushButton::clicked, this, [this] { controller_.collect(); });
    QObject::connect(copy, &QPushButton::clicked, this, [this] { controller_.copyReport(); });
    QObject::connect(share, &QPushButton::clicked, this, [this] { controller_.shareReport(); });
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(4);
    buttons->addWidget(regenerate_);
    buttons->addWidget(copy);
    buttons->addWidget(share);
    return buttons;
}

void DiagnosticsExportView::show(const DiagnosticsExportContent& content) {
    regenerate_->setVisible(content.ready.has_value());
    message_->setVisible(content.actionMessage.has_value());
    if (content.actionMessage)
        message_->show(*content.actionMessage);
    if (content.progress)
        progress_->show(*content.progress);
    if (content.ready)
        ready_->show(*content.ready);
    pages_->setCurrentWidget(content.ready ? static_cast<QWidget*>(ready_) : progress_);
}

void DiagnosticsExportView::showEvent(QShowEvent* event) {
    QScrollArea::showEvent(event);
    if (event->spontaneous())
        return;
    controller_.open(*this);
    // No control is chosen yet: the first Tab goes to the first one.
    setFocus(Qt::OtherFocusReason);
}

void DiagnosticsExportView::hideEvent(QHideEvent* event) {
    QScrollArea::hideEvent(event);
    if (!event->spontaneous())
        controller_.close();
}

} // namespace tolvo
