#pragma once

#include "platform/services/settings_database.h"

#include <map>
#include <optional>
#include <string>

namespace tolvo {

/// The keys of a settings text, each with its value, or with nothing if that is of another type than settings have.
using StoredSettings = std::map<std::string, std::optional<SettingsValue>>;

/// Values to set, and keys to remove.
using SettingsChanges = std::map<std::string, std::optional<SettingsValue>>;

/// Nothing for a text that is no JSON object, is nested more than 64 deep, or is longer than the limit of a settings
/// file. A blank text has no keys.
std::optional<StoredSettings> parseSettings(const std::string& text);

/// The text with the changes made and all else kept; a broken text counts as one without keys.
std::string changedSettings(const std::string& text, const SettingsChanges& changes);

} // namespace tolvo
