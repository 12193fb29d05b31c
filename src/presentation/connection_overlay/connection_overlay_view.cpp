#include "presentation/connection_overlay/connection_overlay_view.h"

#include "presentation/rows/badge_view.h"
#include "presentation/rows/breakable_text_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/metric_trend_row_view.h"
#include "presentation/rows/style_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

ConnectionOverlayView::ConnectionOverlayView(PanelController& controller, QWidget* parent)
    : OverlayView(controller, PanelRoute::ConnectionMonitor, connectionOverlayHeader, parent),
      status_(makeLabel("", TextStyle::Body, this)),
      quality_(new BadgeView(this)),
      card_(new CardView("", this)) {
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing::item);
    line->addWidget(status_, 1);
    line->addWidget(quality_);
    body().addLayout(line);
    body().addWidget(card_);
    body().addStretch();
}

void ConnectionOverlayView::show(const ConnectionOverlayContent& content) {
    showBreakable(*status_, content.statusText);
    quality_->setVisible(content.quality.has_value());
    if (content.quality)
        quality_->show(*content.quality);
    while (rows_.size() < content.rows.size()) {
        rows_.push_back(new MetricTrendRowView(card_));
        card_->rows().addWidget(rows_.back());
    }
    for (std::size_t i = 0; i < content.rows.size(); ++i)
        rows_[i]->show(content.rows[i]);
}

} // namespace tolvo
