#pragma once

#include "presentation/connection_overlay/connection_overlay_content.h"
#include "presentation/panel/overlay_view.h"

#include <vector>

class QLabel;

namespace tolvo {

class BadgeView;
class CardView;
class MetricTrendRowView;

/// TCP connection pressure.
class ConnectionOverlayView final : public OverlayView {
public:
    explicit ConnectionOverlayView(PanelController& controller, QWidget* parent = nullptr);

    void show(const ConnectionOverlayContent& content);

private:
    QLabel* status_;
    BadgeView* quality_;
    CardView* card_;
    std::vector<MetricTrendRowView*> rows_;
};

} // namespace tolvo
