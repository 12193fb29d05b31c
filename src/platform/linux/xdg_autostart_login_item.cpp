#include "platform/linux/xdg_autostart_login_item.h"

#include "core/text.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/login_item_settings_program.h"
#include "platform/linux/xdg_folders.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tolvo {

namespace {

namespace fs = std::filesystem;

std::unexpected<LoginItemError> failure(const fs::path& path, const std::string& what) {
    return std::unexpected(LoginItemError{path.string() + " " + what});
}

std::unexpected<LoginItemError> noFolder() {
    return std::unexpected(LoginItemError{"The user has no folder for settings."});
}

} // namespace

XdgAutostartLoginItem::XdgAutostartLoginItem(std::optional<fs::path> entryPath, fs::path program,
                                             std::string currentDesktops, LoginItemSettingsProgram& settingsProgram)
    : entryPath_(std::move(entryPath)),
      program_(std::move(program)),
      currentDesktops_(":" + std::move(currentDesktops) + ":"),
      settingsProgram_(settingsProgram) {}

std::optional<fs::path> XdgAutostartLoginItem::standardPath() {
    if (const auto folder = userConfigFolder())
        return *folder / "autostart" / "tolvo.desktop";
    return std::nullopt;
}

fs::path XdgAutostartLoginItem::runningProgram() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error);
}

LoginItemStatus XdgAutostartLoginItem::status() const {
    switch (entryPath_ ? entryIn(SettingsFile(*entryPath_).read()) : Entry::Missing) {
    case Entry::Missing:
        return LoginItemStatus::NotRegistered;
    case Entry::Enabled:
        return LoginItemStatus::Enabled;
    case Entry::Disabled:
        return LoginItemStatus::RequiresApproval;
    case Entry::OfAMovedProgram:
    case Entry::Foreign:
        return LoginItemStatus::NotFound;
    }
    return LoginItemStatus::NotFound;
}

XdgAutostartLoginItem::Entry XdgAutostartLoginItem::entryIn(const SettingsFileReading& reading) const {
    if (reading.kind == SettingsFileReading::Kind::Missing)
        return Entry::Missing;
    const auto entry = DesktopEntry::parse(reading.text);
    const std::string exec = entry ? entry->string("Exec").value_or("") : "";
    // The user may start it through another program, with a delay or other variables.
    const bool isOurs = exec.find(program_.filename().string()) != std::string::npos;
    if (!isOurs || entry->string("Type") != "Application")
        return Entry::Foreign;
    if (!isShown(*entry))
        return Entry::Disabled;
    const fs::path started = firstWordOfExec(exec);
    std::error_code error;
    return started.is_absolute() && !fs::exists(started, error) ? Entry::OfAMovedProgram : Entry::Enabled;
}

bool XdgAutostartLoginItem::isShown(const DesktopEntry& entry) const {
    const auto only = entry.string("OnlyShowIn");
    return !entry.isTrue("Hidden") && !entry.isFalse("X-GNOME-Autostart-enabled") &&
           !isOnThisDesktop(entry.list("NotShowIn")) && (!only || isOnThisDesktop(entry.list("OnlyShowIn")));
}

bool XdgAutostartLoginItem::isOnThisDesktop(const std::vector<std::string>& desktops) const {
    return std::ranges::any_of(desktops, [this](const std::string& desktop) {
        return currentDesktops_.find(":" + desktop + ":") != std::string::npos;
    });
}

std::string XdgAutostartLoginItem::entryText() const {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Tolvo\n"
           "Comment=Tells at a glance whether the Wi-Fi and the network behind it are well\n"
           "Exec=" +
           execValue(program_.string()) +
           // Nothing is started, nor complained of, once the program is gone.
           "\nTryExec=" + stringValue(program_.string()) +
           "\n"
           "Icon=tolvo\n"
           "Terminal=false\n"
           "StartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

std::expected<void, LoginItemError> XdgAutostartLoginItem::registerItem() {
    if (!entryPath_)
        return noFolder();
    if (!program_.is_absolute() || !isValidUTF8(program_.string()))
        return failure(program_, "can't be named in an autostart entry.");
    const SettingsFile file(*entryPath_);
    const auto lock = file.prepareToReplace();
    const SettingsFileReading present = file.read();
    const Entry entry = entryIn(present);
    if (entry == Entry::Enabled || entry == Entry::Disabled)
        return {};
    const auto oldFile = entry == Entry::Foreign ? SettingsFile::OldFile::KeepAside : SettingsFile::OldFile::Replace;
    if (file.replace(entryText(), present, oldFile) != SettingsFile::Outcome::Replaced)
        return failure(*entryPath_, "can't be written.");
    return {};
}

std::expected<void, LoginItemError> XdgAutostartLoginItem::unregisterItem() {
    if (!entryPath_)
        return noFolder();
    if (entryIn(SettingsFile(*entryPath_).read()) == Entry::Foreign)
        return {};
    std::error_code error;
    fs::remove(*entryPath_, error);
    if (error)
        return failure(*entryPath_, "can't be removed: " + error.message());
    return {};
}

void XdgAutostartLoginItem::openSettings() {
    settingsProgram_.open(currentDesktops_, entryPath_ ? entryPath_->parent_path() : fs::path());
}

} // namespace tolvo
