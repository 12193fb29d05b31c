#pragma once

#include "presentation/captive_portal_overlay/captive_portal_overlay_content.h"
#include "presentation/connection_overlay/connection_overlay_content.h"
#include "presentation/dashboard/dashboard_content.h"
#include "presentation/location_permission/location_permission_content.h"
#include "presentation/panel/panel_route.h"
#include "presentation/settings/settings_content.h"

namespace tolvo {

/// All that the popover's panels say at one moment.
struct PanelContent {
    PanelRoute route = PanelRoute::Dashboard;
    DashboardContent dashboard;
    LocationPermissionContent location;
    ConnectionOverlayContent connection;
    CaptivePortalOverlayContent captivePortal;
    SettingsContent settings;
};

/// Shows the panels.
class PanelDisplaying {
public:
    PanelDisplaying(const PanelDisplaying&) = delete;
    PanelDisplaying& operator=(const PanelDisplaying&) = delete;
    virtual ~PanelDisplaying() = default;

    virtual void show(const PanelContent& content) = 0;

protected:
    PanelDisplaying() = default;
};

} // namespace tolvo
