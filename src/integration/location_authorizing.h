#pragma once

#include "integration/location_permission_status.h"

#include <functional>

namespace tolvo {

/// Knows the location permission and asks for it. The location itself is never read. Main thread only.
class LocationAuthorizing {
public:
    LocationAuthorizing(const LocationAuthorizing&) = delete;
    LocationAuthorizing& operator=(const LocationAuthorizing&) = delete;
    virtual ~LocationAuthorizing() = default;

    virtual LocationPermissionStatus authorizationStatus() const = 0;

    /// Told of each change while it is set; a change that nobody heard is not lost, since the status can be read.
    std::function<void(LocationPermissionStatus)> onAuthorizationStatusChange;

    virtual void requestAuthorization() = 0;

protected:
    LocationAuthorizing() = default;
};

} // namespace tolvo
