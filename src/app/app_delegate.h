#pragma once

#include "app/desktop_integration.h"
#include "app/front_end.h"
#include "app/monitoring.h"
#include "app/on_demand_tests.h"
#include "app/system_services.h"
#include "core/nw_path_network_change_observer.h"
#include "core/user_defaults_app_settings_store.h"
#include "core/workspace_sleep_wake_observer.h"
#include "integration/core_location_authorizer.h"
#include "integration/location_permission_controller.h"
#include "integration/system_settings_location_opener.h"
#include "integration/workspace_url_opener.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tolvo {

/// The composition root: builds every object that lives as long as the program, and decides what starts in which order
/// at launch and what stops at termination. Main thread only.
class AppDelegate {
public:
    using FrontEndFactory = std::function<std::unique_ptr<FrontEnd>(AppDelegate&)>;

    /// A program of the desktop gives the desktop's workspace, and looks for updates.
    AppDelegate(MainLoop& loop, FrontEndFactory makeFrontEnd, Workspace* desktopWorkspace = nullptr);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    SystemServices& system() { return system_; }
    AppSettingsStoring& appSettingsStore() { return appSettingsStore_; }
    LocationPermissionController& locationPermissionController() { return locationPermissionController_; }
    // Built at their first use.
    Monitoring& monitoring();
    OnDemandTests& onDemandTests();
    DesktopIntegration& desktopIntegration();

private:
    void bindLastSSID();
    void startControllers();

    SystemServices system_;
    UserDefaultsAppSettingsStore appSettingsStore_;
    CoreLocationAuthorizer locationAuthorizer_;
    WorkspaceURLOpener urlOpener_;
    SystemSettingsLocationOpener locationSettingsOpener_;
    LocationPermissionController locationPermissionController_;
    NWPathNetworkChangeObserver networkChangeObserver_;
    WorkspaceSleepWakeObserver sleepWakeObserver_;
    std::optional<Monitoring> monitoring_;
    std::optional<OnDemandTests> onDemandTests_;
    const bool isDesktopProgram_;
    std::optional<DesktopIntegration> desktopIntegration_;
    FrontEndFactory makeFrontEnd_;
    std::unique_ptr<FrontEnd> frontEnd_;
    bool hasStartedControllers_ = false;
    std::optional<std::string> boundSSID_;
    Subscription ssidSubscription_;
};

} // namespace tolvo
