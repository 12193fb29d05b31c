#pragma once

#include "integration/location_permission_status.h"

#include <optional>
#include <string_view>

namespace tolvo {

/// What the panel says about the location permission.
struct LocationPermissionContent {
    std::string_view title;
    std::string_view text;
    /// The button's title; nothing where there is nothing left to do.
    std::optional<std::string_view> button;
};

LocationPermissionContent locationPermissionContent(LocationPermissionStatus status);

} // namespace tolvo
