#pragma once

#include "presentation/panel/overlay_header.h"
#include "presentation/panel/panel_route.h"

#include <QWidget>

class QScrollArea;
class QVBoxLayout;

namespace tolvo {

class PanelController;

/// A card over the dashboard: the way back, a title, and a scrolling body.
class OverlayView : public QWidget {
public:
    OverlayView(PanelController& controller, PanelRoute route, const OverlayHeader& header, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Where the overlay's own rows go.
    QVBoxLayout& body() { return *body_; }

private:
    QVBoxLayout* body_;
    QScrollArea* scroll_;
};

} // namespace tolvo
