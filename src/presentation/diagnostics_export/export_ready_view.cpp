#include "presentation/diagnostics_export/export_ready_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/diagnostics_export/check_row_view.h"
#include "presentation/diagnostics_export/diagnostics_share_preview_card_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/scroll_bar_view.h"
#include "presentation/rows/style_view.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

/// In points, growing with the type; in the widths of a digit.
constexpr int smallestOverviewWidth = 340;
constexpr int largestOverviewWidth = 440;
constexpr int overviewDigits = 40;
constexpr int gap = 20;
constexpr int payloadPixels = 12;

/// Of size 12, or larger for a reader of large type.
QFont payloadFont(const QWidget& widget) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const int caption = QFontInfo(textFont(TextStyle::Caption, widget)).pixelSize();
    font.setPixelSize(std::max(payloadPixels, caption));
    return font;
}

/// Shows by its ring that the keyboard is in the text.
class PayloadCard final : public CardView {
public:
    PayloadCard(QPlainTextEdit& payload, QWidget* parent) : CardView("", parent), payload_(payload) {
        rows().addWidget(&payload);
        connect(qApp, &QApplication::focusChanged, this, [this] { update(); });
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        CardView::paintEvent(event);
        QPainter painter(this);
        if (payload_.hasFocus())
            paintFocusRing(painter, rect(), cardRadius, palette().color(QPalette::Highlight));
    }

private:
    QPlainTextEdit& payload_;
};

} // namespace

ExportReadyView::ExportReadyView(QWidget* parent) : QWidget(parent), payload_(makePayload()) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(gap);
    grid->setVerticalSpacing(spacing::item);
    grid->addWidget(makeLabel(diagnostics_export::previewTitle, TextStyle::Headline, this), 0, 0);
    grid->addWidget(makeOverview(), 1, 0);
    auto* title = makeLabel(diagnostics_export::payloadTitle, TextStyle::Headline, this);
    title->setBuddy(payload_);
    grid->addWidget(title, 0, 1);
    grid->addWidget(new PayloadCard(*payload_, this), 1, 1);
    grid->setColumnStretch(1, 1);
}

QWidget* ExportReadyView::makeOverview() {
    auto* overview = new QWidget(this);
    overview->setFixedWidth(std::clamp(overviewDigits * fontMetrics().horizontalAdvance(QLatin1Char('0')),
                                       smallestOverviewWidth, largestOverviewWidth));
    card_ = new DiagnosticsSharePreviewCardView(overview);
    auto* included = new CardView("", overview);
    for (const DiagnosticsIncludedRow& row : diagnostics_export::includedRows) {
        auto* view = new CheckRowView(row.text, included);
        view->showChecked(diagnostics_export::includedRowSymbol, "");
        included->rows().addWidget(view);
    }
    auto* column = new QVBoxLayout(overview);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::item);
    column->addWidget(card_);
    column->addSpacing(spacing::item);
    column->addWidget(makeLabel(diagnostics_export::includedTitle, TextStyle::Headline, overview));
    column->addWidget(included);
    column->addStretch();
    return overview;
}

QPlainTextEdit* ExportReadyView::makePayload() {
    auto* payload = new QPlainTextEdit(this);
    payload->setReadOnly(true);
    payload->setFrameShape(QFrame::NoFrame);
    payload->document()->setDocumentMargin(0);
    payload->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    payload->setVerticalScrollBar(new ScrollBarView(payload));
    payload->setTabChangesFocus(true);
    payload->setUndoRedoEnabled(false);
    payload->setLineWrapMode(QPlainTextEdit::NoWrap);
    payload->setFont(payloadFont(*this));
    payload->setAccessibleName(toQString(diagnostics_export::payloadTitle));
    // A report reads from left to right for every reader.
    payload->setLayoutDirection(Qt::LeftToRight);
    return payload;
}

void ExportReadyView::show(const DiagnosticsExportContent::Ready& ready) {
    card_->show(ready.card);
    // The reader's place and selection stay while only a message changes.
    if (ready.payload == shownPayload_)
        return;
    shownPayload_ = ready.payload;
    payload_->setPlainText(toQString(ready.payload));
}

} // namespace tolvo
