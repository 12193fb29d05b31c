#pragma once

#include <optional>
#include <string>

namespace tolvo {

/// The five settings that outlive the program. No operation fails: what can't be read is the default. Main thread only.
class AppSettingsStoring {
public:
    AppSettingsStoring(const AppSettingsStoring&) = delete;
    AppSettingsStoring& operator=(const AppSettingsStoring&) = delete;
    virtual ~AppSettingsStoring() = default;

    virtual bool monitoringEnabled() const = 0;
    virtual void setMonitoringEnabled(bool isEnabled) = 0;
    virtual bool batteryFriendly() const = 0;
    virtual void setBatteryFriendly(bool isBatteryFriendly) = 0;
    virtual bool colorfulIcon() const = 0;
    virtual void setColorfulIcon(bool isColorful) = 0;
    /// Trimmed, never blank.
    virtual std::string internetPingTarget() const = 0;
    virtual void setInternetPingTarget(std::string target) = 0;
    /// A record of the last network's name. Setting it to nothing or to blanks removes it.
    virtual std::optional<std::string> lastSSID() const = 0;
    virtual void setLastSSID(std::optional<std::string> ssid) = 0;

protected:
    AppSettingsStoring() = default;
};

/// Keeps the settings in memory, from the registered defaults on.
class InMemoryAppSettingsStore final : public AppSettingsStoring {
public:
    bool monitoringEnabled() const override { return monitoringEnabled_; }
    void setMonitoringEnabled(bool isEnabled) override { monitoringEnabled_ = isEnabled; }
    bool batteryFriendly() const override { return batteryFriendly_; }
    void setBatteryFriendly(bool isBatteryFriendly) override { batteryFriendly_ = isBatteryFriendly; }
    bool colorfulIcon() const override { return colorfulIcon_; }
    void setColorfulIcon(bool isColorful) override { colorfulIcon_ = isColorful; }
    std::string internetPingTarget() const override { return internetPingTarget_; }
    void setInternetPingTarget(std::string target) override { internetPingTarget_ = std::move(target); }
    std::optional<std::string> lastSSID() const override { return lastSSID_; }
    void setLastSSID(std::optional<std::string> ssid) override { lastSSID_ = std::move(ssid); }

private:
    bool monitoringEnabled_ = true;
    bool batteryFriendly_ = true;
    bool colorfulIcon_ = false;
    std::string internetPingTarget_ = "1.1.1.1";
    std::optional<std::string> lastSSID_;
};

} // namespace tolvo
