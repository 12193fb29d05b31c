#include "platform/linux/login_item_settings_program.h"

#include <unistd.h>

#include <array>
#include <string_view>

namespace tolvo {

namespace {

struct SettingsProgram {
    std::string_view desktop;
    const char* path;
    const char* argument;
};

constexpr std::array<SettingsProgram, 8> programs{{{":KDE:", "/usr/bin/systemsettings", "kcm_autostart"},
                                                   {":KDE:", "/usr/bin/systemsettings5", "kcm_autostart"},
                                                   {":XFCE:", "/usr/bin/xfce4-session-settings", nullptr},
                                                   {":MATE:", "/usr/bin/mate-session-properties", nullptr},
                                                   {":X-Cinnamon:", "/usr/bin/cinnamon-settings", "startup"},
                                                   {":LXQt:", "/usr/bin/lxqt-config-session", nullptr},
                                                   {":GNOME:", "/usr/bin/gnome-tweaks", nullptr},
                                                   {":GNOME:", "/usr/bin/gnome-session-properties", nullptr}}};

} // namespace

void LoginItemSettingsProgram::open(std::string_view desktops, const std::filesystem::path& autostartFolder) {
    for (const auto& [desktop, path, argument] : programs) {
        if (desktops.find(desktop) == std::string_view::npos || ::access(path, X_OK) != 0)
            continue;
        if (start(path, argument ? std::vector<std::string>{argument} : std::vector<std::string>{}))
            return;
    }
    if (autostartFolder.is_absolute())
        workspace_.openURL(*URL::parse("file://" + percentEncoded(autostartFolder.string(), "/")));
}

bool LoginItemSettingsProgram::start(const std::string& program, const std::vector<std::string>& arguments) {
    const auto position = running_.emplace(running_.end());
    auto started = processService_.launch(program, arguments,
                                          [this, position](const ProcessTermination&) { running_.erase(position); });
    if (!started) {
        running_.erase(position);
        return false;
    }
    *position = *std::move(started);
    return true;
}

} // namespace tolvo
