#include "integration/core_location_authorizer.h"

namespace tolvo {

CoreLocationAuthorizer::CoreLocationAuthorizer(LocationManager& locationManager) : locationManager_(locationManager) {
    locationManager_.onDidChangeAuthorization = [this] {
        if (onAuthorizationStatusChange)
            onAuthorizationStatusChange(authorizationStatus());
    };
}

CoreLocationAuthorizer::~CoreLocationAuthorizer() {
    locationManager_.onDidChangeAuthorization = nullptr;
}

LocationPermissionStatus CoreLocationAuthorizer::authorizationStatus() const {
    switch (locationManager_.authorizationStatus()) {
    case 0:
        return LocationPermissionStatus::NotDetermined;
    case 2:
        return LocationPermissionStatus::Denied;
    case 3:
    case 4:
        return LocationPermissionStatus::Authorized;
    default:
        return LocationPermissionStatus::Restricted;
    }
}

void CoreLocationAuthorizer::requestAuthorization() {
    locationManager_.requestWhenInUseAuthorization();
}

} // namespace tolvo
