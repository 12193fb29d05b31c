#include "platform/linux/json_file_user_defaults.h"

#include "platform/linux/xdg_folders.h"

#include <algorithm>
#include <utility>

namespace tolvo {

namespace {

using Kind = SettingsFileReading::Kind;

bool holds(const StoredSettings& stored, const SettingsChanges& changes) {
    return std::ranges::all_of(changes, [&](const auto& change) {
        const auto& [key, value] = change;
        const auto found = stored.find(key);
        return value ? found != stored.end() && found->second == value : found == stored.end();
    });
}

} // namespace

JsonFileUserDefaults::JsonFileUserDefaults(std::optional<std::filesystem::path> path) {
    if (path)
        file_.emplace(std::move(*path));
}

std::optional<std::filesystem::path> JsonFileUserDefaults::standardPath() {
    if (const auto folder = userConfigFolder())
        return *folder / "tolvo" / "settings.json";
    return std::nullopt;
}

void JsonFileUserDefaults::registerDefaults(std::map<std::string, SettingsValue> defaults) {
    for (auto& [key, value] : defaults)
        defaults_.insert_or_assign(key, std::move(value));
}

bool JsonFileUserDefaults::boolForKey(const std::string& key) const {
    const auto found = value(key);
    return found && std::holds_alternative<bool>(*found) && std::get<bool>(*found);
}

std::optional<std::string> JsonFileUserDefaults::stringForKey(const std::string& key) const {
    const auto found = value(key);
    if (!found || !std::holds_alternative<std::string>(*found))
        return std::nullopt;
    return std::get<std::string>(*found);
}

void JsonFileUserDefaults::set(SettingsValue value, const std::string& key) {
    change(key, std::move(value));
}

void JsonFileUserDefaults::removeObject(const std::string& key) {
    change(key, std::nullopt);
}

/// What was set or removed and couldn't be written comes before the file, and the file before the defaults.
std::optional<SettingsValue> JsonFileUserDefaults::value(const std::string& key) const {
    const StoredSettings& stored = storedSettings();
    const auto unsaved = unsaved_.find(key);
    if (unsaved != unsaved_.end() && unsaved->second)
        return unsaved->second;
    if (const auto found = stored.find(key); unsaved == unsaved_.end() && found != stored.end())
        return found->second;
    if (const auto found = defaults_.find(key); found != defaults_.end())
        return found->second;
    return std::nullopt;
}

const StoredSettings& JsonFileUserDefaults::storedSettings() const {
    if (!file_ || (isStoredCurrent_ && file_->stamp() == storedStamp_))
        return stored_;
    const SettingsFileReading reading = file_->read();
    stored_ = parseSettings(reading.text).value_or(StoredSettings{});
    storedStamp_ = reading.stamp;
    isStoredCurrent_ = reading.isSettled;
    return stored_;
}

void JsonFileUserDefaults::change(const std::string& key, std::optional<SettingsValue> value) {
    unsaved_.insert_or_assign(key, std::move(value));
    if (writeUnsaved())
        unsaved_.clear();
}

bool JsonFileUserDefaults::writeUnsaved() const {
    if (!file_)
        return false;
    const SettingsFile::Lock lock = file_->prepareToReplace();
    // Others that don't know the lock, such as editors, may be quicker a few times.
    for (int attempt = 0; attempt < 5; ++attempt) {
        const SettingsFileReading old = file_->read();
        if (old.kind == Kind::Unreadable)
            return false;
        const auto stored = parseSettings(old.text);
        if (holds(stored.value_or(StoredSettings{}), unsaved_))
            return true;
        const auto outcome = file_->replace(changedSettings(old.text, unsaved_), old,
                                            stored ? SettingsFile::OldFile::Replace : SettingsFile::OldFile::KeepAside);
        if (outcome != SettingsFile::Outcome::ChangedMeanwhile)
            return outcome == SettingsFile::Outcome::Replaced;
    }
    return false;
}

} // namespace tolvo
