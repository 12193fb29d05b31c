#pragma once

#include "platform/linux/settings_file.h"
#include "platform/linux/settings_json.h"
#include "platform/services/settings_database.h"

#include <filesystem>
#include <optional>
#include <string>

namespace tolvo {

/// The settings of a user in a JSON file that the user may edit as well, also while this program runs: it holds only
/// the keys that were set, and keys that we don't know stay. Setting a key changes that key in what the file says at
/// that moment. A file that isn't a JSON object reads as empty, and is kept under another name when a key is set. A
/// value that can't be written holds in this object, and is written with the next one.
class JsonFileUserDefaults final : public SettingsDatabase {
public:
    /// Without a path, values last as long as this object.
    explicit JsonFileUserDefaults(std::optional<std::filesystem::path> path);

    /// `tolvo/settings.json` in the user's folder of settings.
    static std::optional<std::filesystem::path> standardPath();

    void registerDefaults(std::map<std::string, SettingsValue> defaults) override;
    bool boolForKey(const std::string& key) const override;
    std::optional<std::string> stringForKey(const std::string& key) const override;
    void set(SettingsValue value, const std::string& key) override;
    void removeObject(const std::string& key) override;

private:
    std::optional<SettingsValue> value(const std::string& key) const;
    const StoredSettings& storedSettings() const;
    void change(const std::string& key, std::optional<SettingsValue> value);
    bool writeUnsaved() const;

    std::optional<SettingsFile> file_;
    std::map<std::string, SettingsValue> defaults_;
    SettingsChanges unsaved_;

    mutable StoredSettings stored_;
    mutable std::optional<FileStamp> storedStamp_;
    mutable bool isStoredCurrent_ = false;
};

} // namespace tolvo
