#include "presentation/menu_bar/menu_bar_controller.h"

#include "presentation/menu_bar/menu_bar_content.h"

#include <utility>

namespace tolvo {

MenuBarController::MenuBarController(MenuBarServices services, MenuBarSources sources, MenuBarActions actions)
    : services_(services), sources_(sources), actions_(std::move(actions)) {
    services_.popover.setContentSize(initialPopoverSize);
    services_.popover.onDidClose = [this] { popoverDidClose(); };
    services_.statusItem.onActivate = [this](ScreenRect place) { togglePopover(place); };
    services_.statusItem.onHostChange = [this](bool isHosted) { hostDidChange(isHosted); };
    monitoringSubscription_ = sources_.isMonitoringEnabled.subscribe([this](bool) { refreshStatusIcon(); });
    healthSubscription_ = sources_.healthState.subscribe([this](HealthState state) { refreshStatusIcon(state); });
}

MenuBarController::~MenuBarController() {
    services_.popover.onDidClose = nullptr;
    services_.statusItem.onActivate = nullptr;
    services_.statusItem.onHostChange = nullptr;
}

void MenuBarController::installStatusItem() {
    if (std::exchange(isInstalled_, true))
        return;
    services_.statusItem.setToolTip(std::string(statusItemToolTip));
    refreshStatusIcon();
    services_.statusItem.install();
}

void MenuBarController::removeStatusItem() {
    if (!std::exchange(isInstalled_, false))
        return;
    if (services_.popover.isShown())
        services_.popover.close();
    removeClickMonitors();
    services_.statusItem.remove();
}

void MenuBarController::refreshStatusIcon() {
    refreshStatusIcon(sources_.healthState.value());
}

void MenuBarController::refreshStatusIcon(HealthState healthState) {
    if (!isInstalled_)
        return;
    const bool isColorful = sources_.colorfulIconSettingsProvider.colorfulIconEnabled();
    if (const auto image = services_.iconRendering.render(statusIconContent(healthState, isColorful)))
        services_.statusItem.setImage(*image);
}

void MenuBarController::togglePopover(ScreenRect place) {
    if (services_.popover.isShown())
        services_.popover.close();
    else
        showPopover(place);
}

void MenuBarController::presentPopover() {
    if (services_.popover.isShown())
        services_.popover.orderFront();
    else
        showPopover(isHosted_ ? lastPlace_ : std::nullopt);
}

void MenuBarController::showPopover(std::optional<ScreenRect> place) {
    if (!isInstalled_)
        return;
    isOrdinaryWindow_ = !place;
    if (place)
        lastPlace_ = place;
    actions_.refreshLocationStatus();
    services_.popover.show(place);
    actions_.setPopoverPresented(true);
    actions_.applyPollInterval();
    actions_.refreshMonitorsNow();
    if (!isOrdinaryWindow_)
        installClickMonitors();
}

void MenuBarController::popoverDidClose() {
    actions_.setPopoverPresented(false);
    actions_.applyPollInterval();
    removeClickMonitors();
    if (std::exchange(isOrdinaryWindow_, false) && isInstalled_ && !isHosted_)
        actions_.terminate();
}

void MenuBarController::hostDidChange(bool isHosted) {
    isHosted_ = isHosted;
    // Later on, a panel that restarts takes the item away for a moment; no window should jump up then.
    if (!std::exchange(hasHeardOfHost_, true) && !isHosted)
        presentPopover();
}

void MenuBarController::installClickMonitors() {
    if (globalClickMonitor_ || localClickMonitor_)
        return;
    const auto close = [this] {
        if (services_.popover.isShown())
            services_.popover.close();
    };
    globalClickMonitor_ = services_.clickMonitor.addGlobalMonitor(close);
    // The status item's own click is the toggle's.
    localClickMonitor_ = services_.clickMonitor.addLocalMonitor([close](ClickedWindow window) {
        if (window == ClickedWindow::Other)
            close();
    });
}

void MenuBarController::removeClickMonitors() {
    globalClickMonitor_.reset();
    localClickMonitor_.reset();
}

void MenuBarController::setPreferredPopoverHeight(double height) {
    if (const auto size = adjustedPopoverSize(services_.popover.contentSize(), height))
        services_.popover.setContentSize(*size);
}

void MenuBarController::openToolWindow(ToolWindowKind kind) {
    ToolWindow& window = toolWindow(kind);
    if (services_.popover.isShown() && !isOrdinaryWindow_)
        services_.popover.close();
    window.makeKeyAndOrderFront();
}

ToolWindow& MenuBarController::toolWindow(ToolWindowKind kind) {
    std::unique_ptr<ToolWindow>& window = toolWindows_[kind];
    if (!window) {
        const ToolWindowDescription description = toolWindowDescription(kind);
        window = services_.toolWindows.makeToolWindow(description);
        if (!window->setFrameUsingName(description.frameName))
            window->center();
        window->setFrameAutosaveName(description.frameName);
    }
    return *window;
}

} // namespace tolvo
