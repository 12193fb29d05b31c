#include "integration/location_permission_controller.h"

namespace tolvo {

LocationPermissionController::LocationPermissionController(MainLoop& loop, LocationAuthorizing& authorizer,
                                                           LocationSettingsOpening& settingsOpener)
    : status(authorizer.authorizationStatus()), authorizer_(authorizer), settingsOpener_(settingsOpener), tasks_(loop) {
    authorizer_.onAuthorizationStatusChange = [this](LocationPermissionStatus newStatus) {
        tasks_.start(publish(newStatus));
    };
}

LocationPermissionController::~LocationPermissionController() {
    authorizer_.onAuthorizationStatusChange = nullptr;
}

Task<void> LocationPermissionController::publish(LocationPermissionStatus newStatus) {
    status.set(newStatus);
    co_return;
}

void LocationPermissionController::refreshStatus() {
    status.set(authorizer_.authorizationStatus());
}

void LocationPermissionController::requestPermission() {
    if (status.value() == LocationPermissionStatus::NotDetermined)
        authorizer_.requestAuthorization();
}

void LocationPermissionController::performPrimaryAction() {
    switch (status.value()) {
    case LocationPermissionStatus::NotDetermined:
        requestPermission();
        break;
    case LocationPermissionStatus::Denied:
    case LocationPermissionStatus::Restricted:
        settingsOpener_.openLocationSettings();
        break;
    case LocationPermissionStatus::Authorized:
        break;
    }
}

} // namespace tolvo
