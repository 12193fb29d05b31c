#include "presentation/diagnostics_export/export_progress_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/diagnostics_export/check_row_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/linear_progress_view.h"
#include "presentation/rows/style_view.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace tolvo {

namespace {

constexpr int columnWidth = 460;

} // namespace

ExportProgressView::ExportProgressView(QWidget* parent)
    : QWidget(parent), message_(makeLabel("", TextStyle::Headline, this)), bar_(new LinearProgressView(this)) {
    bar_->setFixedHeight(bar_->sizeHint().height());
    bar_->setAccessibleName(toQString(diagnostics_export::progressLabel));
    auto* card = new CardView("", this);
    for (const CollectionStageDescription& stage : collectionStages) {
        stages_.push_back(new CheckRowView(stage.title, card));
        card->rows().addWidget(stages_.back());
    }
    auto* column = new QVBoxLayout;
    column->setSpacing(spacing::inside);
    column->addStretch(2);
    column->addWidget(message_);
    column->addWidget(bar_);
    column->addSpacing(spacing::item);
    column->addWidget(card);
    column->addStretch(3);
    card->setMinimumWidth(columnWidth);
    auto* centred = new QHBoxLayout(this);
    centred->setContentsMargins(0, 0, 0, 0);
    centred->addStretch();
    centred->addLayout(column);
    centred->addStretch();
}

void ExportProgressView::show(const DiagnosticsExportContent::Progress& progress) {
    namespace texts = diagnostics_export;
    message_->setText(toQString(progress.message));
    bar_->show(progress.value);
    for (std::size_t i = 0; i < std::min(stages_.size(), progress.stages.size()); ++i) {
        if (progress.stages[i].isCompleted)
            stages_[i]->showChecked(texts::completedStageSymbol, texts::completedStageLabel);
        else
            stages_[i]->showPending(texts::pendingStageLabel);
    }
}

} // namespace tolvo
