#include "core/user_defaults_app_settings_store.h"

#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

constexpr const char* monitoringEnabledKey = "monitoringEnabled";
constexpr const char* batteryFriendlyKey = "batteryFriendly";
constexpr const char* colorfulIconKey = "colorfulIcon";
constexpr const char* internetPingTargetKey = "internetPingTarget";
constexpr const char* lastSSIDKey = "lastSSID";

constexpr const char* defaultInternetPingTarget = "1.1.1.1";

} // namespace

UserDefaultsAppSettingsStore::UserDefaultsAppSettingsStore(SettingsDatabase& userDefaults)
    : userDefaults_(userDefaults) {
    userDefaults_.registerDefaults({{monitoringEnabledKey, true},
                                    {batteryFriendlyKey, true},
                                    {colorfulIconKey, false},
                                    {internetPingTargetKey, defaultInternetPingTarget}});
}

bool UserDefaultsAppSettingsStore::monitoringEnabled() const {
    return userDefaults_.boolForKey(monitoringEnabledKey);
}

void UserDefaultsAppSettingsStore::setMonitoringEnabled(bool isEnabled) {
    userDefaults_.set(isEnabled, monitoringEnabledKey);
}

bool UserDefaultsAppSettingsStore::batteryFriendly() const {
    return userDefaults_.boolForKey(batteryFriendlyKey);
}

void UserDefaultsAppSettingsStore::setBatteryFriendly(bool isBatteryFriendly) {
    userDefaults_.set(isBatteryFriendly, batteryFriendlyKey);
}

bool UserDefaultsAppSettingsStore::colorfulIcon() const {
    return userDefaults_.boolForKey(colorfulIconKey);
}

void UserDefaultsAppSettingsStore::setColorfulIcon(bool isColorful) {
    userDefaults_.set(isColorful, colorfulIconKey);
}

std::string UserDefaultsAppSettingsStore::internetPingTarget() const {
    const std::string stored = userDefaults_.stringForKey(internetPingTargetKey).value_or("");
    const std::string_view target = trimmed(stored);
    return target.empty() ? defaultInternetPingTarget : std::string(target);
}

void UserDefaultsAppSettingsStore::setInternetPingTarget(std::string target) {
    userDefaults_.set(std::move(target), internetPingTargetKey);
}

std::optional<std::string> UserDefaultsAppSettingsStore::lastSSID() const {
    return userDefaults_.stringForKey(lastSSIDKey);
}

void UserDefaultsAppSettingsStore::setLastSSID(std::optional<std::string> ssid) {
    const std::string_view name = ssid ? trimmed(*ssid) : std::string_view();
    if (name.empty())
        userDefaults_.removeObject(lastSSIDKey);
    else
        userDefaults_.set(std::string(name), lastSSIDKey);
}

} // namespace tolvo
