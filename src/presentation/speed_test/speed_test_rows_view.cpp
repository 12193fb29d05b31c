#include "presentation/speed_test/speed_test_rows_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/breakable_text_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/linear_progress_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/symbol_ground_view.h"
#include "presentation/rows/tabular_label_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace tolvo {

namespace {

constexpr int indicatorSide = 26;

} // namespace

SpeedTestProgressView::SpeedTestProgressView(QWidget* parent)
    : CardView("", parent),
      status_(makeLabel("", TextStyle::Body, this)),
      percent_(new TabularLabelView(this)),
      bar_(new LinearProgressView(this)) {
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::inside);
    line->addWidget(status_, 1);
    line->addWidget(percent_);
    rows().setSpacing(spacing::item);
    rows().addLayout(line);
    rows().addWidget(bar_);
    rows().addSpacing(spacing::item / 2);
}

void SpeedTestProgressView::show(const SpeedTestContent& content) {
    setVisible(content.isRunning);
    if (!content.isRunning)
        return;
    // Assistive programs read a name out each time that it is set.
    if (std::exchange(statusLine_, content.statusLine) != content.statusLine) {
        showBreakable(*status_, content.statusLine);
        bar_->setAccessibleName(toQString(content.statusLine));
    }
    percent_->setText(toQString(content.progressPercent));
    bar_->show(content.progress);
}

SpeedTestInsightView::SpeedTestInsightView(QWidget* parent)
    : QWidget(parent),
      indicator_(new SymbolGroundView(indicatorSide, this)),
      text_(makeWrappedLabel("", TextStyle::Body, this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 4);
    layout->setSpacing(spacing::group);
    layout->addWidget(indicator_);
    layout->addWidget(text_, 1);
}

void SpeedTestInsightView::show(const SpeedTestInsightRow& row) {
    indicator_->show(row.indicatorSymbolName, row.indicatorColor);
    text_->setText(toQString(row.text));
}

} // namespace tolvo
