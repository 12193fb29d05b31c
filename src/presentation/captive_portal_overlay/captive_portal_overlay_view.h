#pragma once

#include "presentation/captive_portal_overlay/captive_portal_overlay_content.h"
#include "presentation/panel/overlay_view.h"

#include <vector>

class QLabel;

namespace tolvo {

class CardView;
class MetricRowView;

/// The captive portal's verdict.
class CaptivePortalOverlayView final : public OverlayView {
public:
    explicit CaptivePortalOverlayView(PanelController& controller, QWidget* parent = nullptr);

    void show(const CaptivePortalOverlayContent& content);

private:
    QLabel* status_;
    CardView* card_;
    std::vector<MetricRowView*> rows_;
    QLabel* urlTitle_;
    QLabel* url_;
};

} // namespace tolvo
