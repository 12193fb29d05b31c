#include "platform/linux/settings_json.h"

#include "core/text.h"
#include "platform/linux/settings_file.h"

#include <nlohmann/json.hpp>

namespace tolvo {

namespace {

using nlohmann::json;

std::optional<json> parseObject(const std::string& text) {
    if (text.size() > SettingsFile::sizeLimit)
        return std::nullopt;
    if (trimmed(text).empty())
        return json::object();
    // Copying and printing recurse, so the depth of what we hold has to be bounded.
    constexpr int mostLevels = 64;
    bool isTooDeep = false;
    const auto boundDepth = [&](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > mostLevels;
        return !isTooDeep;
    };
    json document = json::parse(text, boundDepth, /* allow_exceptions */ false);
    if (isTooDeep || !document.is_object())
        return std::nullopt;
    return document;
}

std::optional<SettingsValue> settingsValue(const json& value) {
    if (value.is_boolean())
        return value.get<bool>();
    if (value.is_string())
        return value.get<std::string>();
    return std::nullopt;
}

} // namespace

std::optional<StoredSettings> parseSettings(const std::string& text) {
    const auto document = parseObject(text);
    if (!document)
        return std::nullopt;
    StoredSettings settings;
    for (const auto& [key, value] : document->items())
        settings.emplace(key, settingsValue(value));
    return settings;
}

std::string changedSettings(const std::string& text, const SettingsChanges& changes) {
    json document = parseObject(text).value_or(json::object());
    for (const auto& [key, value] : changes) {
        if (value)
            std::visit([&entry = document[key]](const auto& typed) { entry = typed; }, *value);
        else
            document.erase(key);
    }
    // Bytes that are no UTF-8 become replacement characters.
    return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

} // namespace tolvo
