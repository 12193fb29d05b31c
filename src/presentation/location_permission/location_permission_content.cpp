#include "presentation/location_permission/location_permission_content.h"

#include <utility>

namespace tolvo {

LocationPermissionContent locationPermissionContent(LocationPermissionStatus status) {
    constexpr std::string_view title = "Location Permission";
    switch (status) {
    case LocationPermissionStatus::NotDetermined:
        return {title,
                "Location permission is only needed to read this Mac's current Wi-Fi SSID and BSSID for local "
                "diagnostics. Tolvo does not use, store, or send your location.",
                "Allow Location Access"};
    case LocationPermissionStatus::Denied:
        return {title,
                "Location permission is off, so SSID and BSSID are unavailable. Tolvo only uses this permission "
                "locally for Wi-Fi diagnostics and does not use, store, or send your location.",
                "Open Settings"};
    case LocationPermissionStatus::Restricted:
        return {title,
                "Location permission is restricted on this Mac, so SSID and BSSID may remain unavailable. Tolvo only "
                "uses this permission locally for Wi-Fi diagnostics and does not use, store, or send your location.",
                "Open Settings"};
    case LocationPermissionStatus::Authorized:
        return {title,
                "Location permission is enabled so Tolvo can read SSID and BSSID locally for diagnostics. Your "
                "location is not used, stored, or sent anywhere.",
                std::nullopt};
    }
    std::unreachable();
}

} // namespace tolvo
