#pragma once

#include "integration/location_authorizing.h"
#include "platform/services/location_manager.h"

namespace tolvo {

/// Asks the LocationManager service, and only ever for use while the program runs.
class CoreLocationAuthorizer final : public LocationAuthorizing {
public:
    explicit CoreLocationAuthorizer(LocationManager& locationManager);
    ~CoreLocationAuthorizer() override;

    LocationPermissionStatus authorizationStatus() const override;
    void requestAuthorization() override;

private:
    LocationManager& locationManager_;
};

} // namespace tolvo
