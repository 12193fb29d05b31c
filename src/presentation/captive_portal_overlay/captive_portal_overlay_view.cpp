#include "presentation/captive_portal_overlay/captive_portal_overlay_view.h"

#include "platform/qt/qt_text.h"
#include "presentation/rows/breakable_text_view.h"
#include "presentation/rows/card_view.h"
#include "presentation/rows/label_view.h"
#include "presentation/rows/metric_row_view.h"
#include "presentation/rows/style_view.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tolvo {

CaptivePortalOverlayView::CaptivePortalOverlayView(PanelController& controller, QWidget* parent)
    : OverlayView(controller, PanelRoute::CaptivePortal, captivePortalOverlayHeader, parent),
      status_(makeLabel("", TextStyle::Body, this)),
      card_(new CardView("", this)),
      urlTitle_(makeLabel("", TextStyle::Body, this, QPalette::PlaceholderText)),
      url_(makeLabel("", TextStyle::Headline, this)) {
    auto* card = new CardView("", this);
    card->rows().setSpacing(2);
    card->rows().addWidget(urlTitle_);
    card->rows().addWidget(url_);
    body().addWidget(status_);
    body().addWidget(card_);
    body().addWidget(card);
    body().addStretch();
}

void CaptivePortalOverlayView::show(const CaptivePortalOverlayContent& content) {
    showBreakable(*status_, content.statusText);
    while (rows_.size() < content.rows.size()) {
        rows_.push_back(new MetricRowView(card_));
        card_->rows().addWidget(rows_.back());
    }
    for (std::size_t i = 0; i < content.rows.size(); ++i)
        rows_[i]->show(content.rows[i]);
    urlTitle_->setText(toQString(content.portalURL.title));
    showBreakable(*url_, content.portalURL.value, content.portalURL.title);
}

} // namespace tolvo
