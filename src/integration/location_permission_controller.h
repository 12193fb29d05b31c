#pragma once

#include "core/async/published.h"
#include "core/async/task_scope.h"
#include "integration/location_authorizing.h"
#include "integration/location_settings_opening.h"

namespace tolvo {

/// Holds the location permission's status and does what its button offers. Main thread only.
class LocationPermissionController final {
public:
    LocationPermissionController(MainLoop& loop, LocationAuthorizing& authorizer,
                                 LocationSettingsOpening& settingsOpener);
    LocationPermissionController(const LocationPermissionController&) = delete;
    LocationPermissionController& operator=(const LocationPermissionController&) = delete;
    ~LocationPermissionController();

    Published<LocationPermissionStatus> status;

    /// Reads the status anew, for changes that were not told.
    void refreshStatus();
    /// Asks the platform, only if nothing was ever decided.
    void requestPermission();
    /// Behind the panel's button: asks, or opens the settings where only they can change the status.
    void performPrimaryAction();

private:
    Task<void> publish(LocationPermissionStatus newStatus);

    LocationAuthorizing& authorizer_;
    LocationSettingsOpening& settingsOpener_;
    TaskScope tasks_;
};

} // namespace tolvo
