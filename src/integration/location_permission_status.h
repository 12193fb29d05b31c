#pragma once

namespace tolvo {

/// Whether the program may read the network's name and the access point's address, which platforms guard as a location.
enum class LocationPermissionStatus { NotDetermined, Denied, Restricted, Authorized };

} // namespace tolvo
