#pragma once

#include "presentation/panel/panel_content.h"

#include <QVariantAnimation>
#include <QWidget>

namespace tolvo {

class CaptivePortalOverlayView;
class ConnectionOverlayView;
class DashboardView;
class PanelController;
class SettingsOverlayView;
class ToolboxOverlayView;

/// The popover's whole content: the dashboard, with the overlays that slide over it. Overlays are built when they are
/// first opened.
class ContentView final : public QWidget, public PanelDisplaying {
public:
    explicit ContentView(PanelController& controller, QWidget* parent = nullptr);
    ~ContentView() override;

    void show(const PanelContent& content) override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget& page(PanelRoute route);
    void fill(const PanelContent& content);
    void startSliding(QWidget& from, QWidget& to, bool isDeeper);
    void slide(double share);
    void finishSliding();

    PanelController& controller_;
    PanelRoute route_ = PanelRoute::Dashboard;
    DashboardView* dashboard_;
    SettingsOverlayView* settings_ = nullptr;
    ToolboxOverlayView* toolbox_ = nullptr;
    ConnectionOverlayView* connection_ = nullptr;
    CaptivePortalOverlayView* captivePortal_ = nullptr;
    QWidget* current_ = nullptr;
    /// What goes out of sight while sliding.
    QWidget* previous_ = nullptr;
    bool isDeeper_ = false;
    QVariantAnimation sliding_;
};

} // namespace tolvo
