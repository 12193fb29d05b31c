#pragma once

#include "platform/linux/settings_file.h"
#include "platform/services/login_item.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tolvo {

class DesktopEntry;
class LoginItemSettingsProgram;

/// An entry in the user's autostart folder, which every desktop reads at its start. One that is disabled, or meant for
/// other desktops, waits for the user's approval: registering leaves it alone. A file of that name that isn't ours is
/// kept beside the new one.
class XdgAutostartLoginItem final : public LoginItem {
public:
    /// Without a path there is nowhere to register. The desktops are XDG_CURRENT_DESKTOP's, the program an absolute
    /// path.
    XdgAutostartLoginItem(std::optional<std::filesystem::path> entryPath, std::filesystem::path program,
                          std::string currentDesktops, LoginItemSettingsProgram& settingsProgram);

    /// `autostart/tolvo.desktop` in the user's folder of settings.
    static std::optional<std::filesystem::path> standardPath();
    /// Where the running program stands; asked before an upgrade may have replaced it.
    static std::filesystem::path runningProgram();

    LoginItemStatus status() const override;
    std::expected<void, LoginItemError> registerItem() override;
    std::expected<void, LoginItemError> unregisterItem() override;
    void openSettings() override;

private:
    enum class Entry { Missing, Enabled, Disabled, OfAMovedProgram, Foreign };

    Entry entryIn(const SettingsFileReading& reading) const;
    bool isShown(const DesktopEntry& entry) const;
    bool isOnThisDesktop(const std::vector<std::string>& desktops) const;
    std::string entryText() const;

    std::optional<std::filesystem::path> entryPath_;
    std::filesystem::path program_;
    std::string currentDesktops_;
    LoginItemSettingsProgram& settingsProgram_;
};

} // namespace tolvo
