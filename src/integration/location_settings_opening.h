#pragma once

namespace tolvo {

/// Takes the user to where the location permission is set.
class LocationSettingsOpening {
public:
    LocationSettingsOpening(const LocationSettingsOpening&) = delete;
    LocationSettingsOpening& operator=(const LocationSettingsOpening&) = delete;
    virtual ~LocationSettingsOpening() = default;

    /// Whether something was opened.
    virtual bool openLocationSettings() = 0;

protected:
    LocationSettingsOpening() = default;
};

} // namespace tolvo
