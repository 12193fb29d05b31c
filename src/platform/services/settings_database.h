#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>

namespace tolvo {

using SettingsValue = std::variant<bool, std::string>;

/// Typed values under keys that outlive the program. No operation fails. Main thread only.
class SettingsDatabase {
public:
    SettingsDatabase(const SettingsDatabase&) = delete;
    SettingsDatabase& operator=(const SettingsDatabase&) = delete;
    virtual ~SettingsDatabase() = default;

    /// What keys read as that were never set. Later registrations add to earlier ones. Nothing is stored.
    virtual void registerDefaults(std::map<std::string, SettingsValue> defaults) = 0;
    /// False for a value of another type.
    virtual bool boolForKey(const std::string& key) const = 0;
    /// Nothing for a value of another type.
    virtual std::optional<std::string> stringForKey(const std::string& key) const = 0;
    virtual void set(SettingsValue value, const std::string& key) = 0;
    virtual void removeObject(const std::string& key) = 0;

protected:
    SettingsDatabase() = default;
};

} // namespace tolvo
