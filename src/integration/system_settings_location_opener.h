#pragma once

#include "integration/location_settings_opening.h"
#include "integration/url_opening.h"

namespace tolvo {

/// Opens the location page of the system's settings: by its present deep link, by its older one, or else the settings
/// program as such.
class SystemSettingsLocationOpener final : public LocationSettingsOpening {
public:
    SystemSettingsLocationOpener(URLOpening& urlOpener, URL fallbackSettingsURL);

    bool openLocationSettings() override;

private:
    URLOpening& urlOpener_;
    URL fallbackSettingsURL_;
};

} // namespace tolvo
