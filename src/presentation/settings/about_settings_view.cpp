#include "presentation/settings/about_settings_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/metric_row_view.h"
#include "presentation/rows/progress_indicator_view.h"
#include "presentation/rows/style_view.h"
#include "presentation/rows/text_button_view.h"
#include "presentation/settings/settings_controller.h"
#include "presentation/settings/settings_rows_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

AboutSettingsView::AboutSettingsView(SettingsController& controller, QWidget* parent)
    : QWidget(parent),
      line_(makeLabel("", TextStyle::Body, this)),
      facts_(new CardView("", this)),
      check_(new TextButtonView("", ButtonProminence::Standard, this)),
      progress_(new ProgressIndicatorView(this)),
      notice_(new CardView("", this)),
      update_(new SettingsNoticeView(this)) {
    line_->setWordWrap(true);
    QObject::connect(check_, &QPushButton::clicked, this, [&controller] { controller.checkForUpdates(); });
    update_->onAction = [&controller] { controller.openDownload(); };
    auto* checking = new QHBoxLayout;
    checking->setSpacing(spacing::item);
    checking->addWidget(check_);
    checking->addWidget(progress_);
    checking->addStretch();
    notice_->rows().addWidget(update_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(spacing::group);
    layout->addWidget(line_);
    layout->addWidget(facts_);
    layout->addLayout(checking);
    layout->addWidget(notice_);
    layout->addStretch();
}

void AboutSettingsView::show(const AboutSettingsContent& content) {
    line_->setText(toQString(content.line));
    while (rows_.size() < content.rows.size()) {
        rows_.push_back(new MetricRowView(facts_));
        facts_->rows().addWidget(rows_.back());
    }
    for (std::size_t i = 0; i < content.rows.size(); ++i)
        rows_[i]->show(content.rows[i]);
    check_->setTitle(content.checkButton);
    check_->setEnabled(!content.isChecking);
    progress_->setVisible(content.isChecking);
    notice_->setVisible(content.update.has_value());
    update_->show(content.update);
}

} // namespace tolvo
