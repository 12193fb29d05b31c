#include "integration/system_settings_location_opener.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tolvo {

namespace {

constexpr std::array<std::string_view, 2> deepLinks{
    "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_LocationServices",
    "x-apple.systempreferences:com.apple.preference.security?Privacy_LocationServices"};

} // namespace

SystemSettingsLocationOpener::SystemSettingsLocationOpener(URLOpening& urlOpener, URL fallbackSettingsURL)
    : urlOpener_(urlOpener), fallbackSettingsURL_(std::move(fallbackSettingsURL)) {}

bool SystemSettingsLocationOpener::openLocationSettings() {
    const auto opens = [this](std::string_view text) {
        const auto url = URL::parse(text);
        return url && urlOpener_.open(*url);
    };
    return std::ranges::any_of(deepLinks, opens) || urlOpener_.open(fallbackSettingsURL_);
}

} // namespace tolvo
