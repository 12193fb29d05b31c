#include "presentation/panel/panel_controller.h"

#include <utility>

namespace tolvo {

namespace {

/// Several values change within one poll; they are shown together.
constexpr Seconds updateDelay(0.03);

} // namespace

PanelController::PanelController(MainLoop& loop, PanelSources sources, SettingsSources settings, PanelActions actions,
                                 const LocaleFormats& formats)
    : loop_(loop),
      sources_(std::move(sources)),
      actions_(std::move(actions)),
      formats_(formats),
      settings_(loop, std::move(settings), [this] { scheduleUpdate(); }),
      subscriptions_(subscribeToAll(sources_.dashboard, [this] { scheduleUpdate(); })) {
    subscriptions_.push_back(sources_.locationPermissionStatus.subscribe([this](auto) { scheduleUpdate(); }));
    subscriptions_.push_back(sources_.connectionHistory.subscribe([this](const auto&) { scheduleUpdate(); }));
}

void PanelController::setDisplay(PanelDisplaying* display) {
    const bool isFirst = display != nullptr && display_ == nullptr;
    display_ = display;
    if (isFirst)
        actions_.onPreferredPopoverHeightChange(preferredPopoverHeight(activePanel_));
    update();
}

void PanelController::openPanel(PanelRoute route) {
    if (std::exchange(activePanel_, route) == route)
        return;
    actions_.onPreferredPopoverHeightChange(preferredPopoverHeight(route));
    update();
}

void PanelController::goBack() {
    if (const auto back = backButton(activePanel_))
        openPanel(back->route);
}

void PanelController::performToolboxAction(ToolboxAction action) {
    switch (action) {
    case ToolboxAction::OpenWiFiRadar:
        return actions_.onOpenToolWindow(ToolWindowKind::WiFiRadar);
    case ToolboxAction::OpenChannelScan:
        return actions_.onOpenToolWindow(ToolWindowKind::ChannelScan);
    case ToolboxAction::OpenSpeedTest:
        return actions_.onOpenToolWindow(ToolWindowKind::SpeedTest);
    case ToolboxAction::OpenDiagnosticsExport:
        return actions_.onOpenToolWindow(ToolWindowKind::DiagnosticsExport);
    case ToolboxAction::OpenConnectionMonitor:
        return openPanel(PanelRoute::ConnectionMonitor);
    case ToolboxAction::OpenCaptivePortal:
        return openPanel(PanelRoute::CaptivePortal);
    }
}

PanelContent PanelController::content() const {
    const DashboardSources& values = sources_.dashboard;
    return {
        .route = activePanel_,
        .dashboard = dashboardContent(values, NumberFormat{formats_.decimalSeparator()}),
        .location = locationPermissionContent(sources_.locationPermissionStatus.value()),
        .connection = connectionOverlayContent(values.connectionResult.value(), sources_.connectionHistory.value(),
                                               values.connectionErrorMessage.value()),
        .captivePortal = captivePortalOverlayContent(values.captivePortalStatus.value(),
                                                     values.captivePortalErrorMessage.value(), formats_),
        .settings = settings_.content(),
    };
}

void PanelController::scheduleUpdate() {
    if (display_ == nullptr || std::exchange(isUpdateScheduled_, true))
        return;
    update_ = loop_.after(updateDelay, [this] { update(); });
}

void PanelController::update() {
    update_.reset();
    isUpdateScheduled_ = false;
    if (display_ != nullptr)
        display_->show(content());
}

} // namespace tolvo
