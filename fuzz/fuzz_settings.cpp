#include "core/text.h"
#include "fuzz/require.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/settings_json.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using namespace tolvo;
using fuzzing::require;

/// A change takes effect, and what it doesn't name stays.
void requireSoundChange(const std::string& text, const SettingsChanges& changes) {
    const auto before = parseSettings(text);
    const auto after = parseSettings(changedSettings(text, changes));
    require(after.has_value());
    for (const auto& [key, value] : changes)
        require(value ? after->contains(key) && after->at(key) == value : !after->contains(key));
    for (const auto& [key, value] : before.value_or(StoredSettings{}))
        require(changes.contains(key) || (after->contains(key) && after->at(key) == value));
}

/// A program's path comes back out of the entry that starts it.
void requireSoundEntry(const std::string& text) {
    if (const auto entry = DesktopEntry::parse(text)) {
        entry->list("OnlyShowIn");
        require(!entry->isTrue("Hidden") || !entry->isFalse("Hidden"));
        firstWordOfExec(entry->string("Exec").value_or(""));
    }
    const std::string program = text.substr(0, text.find('\0'));
    const auto written = DesktopEntry::parse("[Desktop Entry]\nExec=" + execValue(program) + "\n");
    require(written && firstWordOfExec(written->string("Exec").value_or("")) == program);
}

} // namespace

/// Any bytes as the settings' file, as an autostart entry, and as a setting.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    SettingsChanges changes{{"monitoringEnabled", true}, {"batteryFriendly", std::nullopt}};
    if (isValidUTF8(text))
        changes.insert_or_assign("lastSSID", text);
    requireSoundChange(text, changes);
    requireSoundEntry(text);
    return 0;
}
