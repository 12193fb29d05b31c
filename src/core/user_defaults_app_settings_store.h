#pragma once

#include "core/app_settings_storing.h"
#include "platform/services/settings_database.h"

namespace tolvo {

/// The settings in the user's settings database, under keys named after them.
class UserDefaultsAppSettingsStore final : public AppSettingsStoring {
public:
    /// Registers the defaults.
    explicit UserDefaultsAppSettingsStore(SettingsDatabase& userDefaults);

    bool monitoringEnabled() const override;
    void setMonitoringEnabled(bool isEnabled) override;
    bool batteryFriendly() const override;
    void setBatteryFriendly(bool isBatteryFriendly) override;
    bool colorfulIcon() const override;
    void setColorfulIcon(bool isColorful) override;
    std::string internetPingTarget() const override;
    void setInternetPingTarget(std::string target) override;
    std::optional<std::string> lastSSID() const override;
    void setLastSSID(std::optional<std::string> ssid) override;

private:
    SettingsDatabase& userDefaults_;
};

} // namespace tolvo
