#include "integration/launch_at_login_controller.h"
#include "platform/linux/desktop_entry.h"
#include "platform/linux/login_item_settings_program.h"
#include "platform/linux/posted_notification_center.h"
#include "platform/linux/xdg_autostart_login_item.h"
#include "tests/support/manual_loop.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tolvo::testing {
namespace {

namespace fs = std::filesystem;
using enum LoginItemStatus;

/// A desktop without a program for login items.
struct BareDesktop final : ProcessService, Workspace {
    std::expected<std::unique_ptr<RunningProcess>, ProcessLaunchError>
    launch(const std::string&, const std::vector<std::string>&, TerminationHandler) override {
        return std::unexpected(ProcessLaunchError{"none"});
    }
    bool openURL(const URL& url) override {
        opened = url.text();
        return true;
    }
    std::string opened;
};

struct LaunchAtLogin : ::testing::Test {
    LaunchAtLogin() { std::ofstream(program) << "a program"; }

    std::string text() const {
        std::ifstream stream(path);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::ptrdiff_t fileCount() const {
        const fs::directory_iterator files(path.parent_path());
        return std::distance(begin(files), end(files));
    }
    /// What the panel shows once the user comes back from elsewhere.
    LoginItemStatus shownStatus() {
        notificationCenter.post(ApplicationNotification::DidBecomeActive);
        loop.runUntilIdle();
        EXPECT_FALSE(controller.isEnabled.value() && controller.requiresApproval.value());
        return controller.isEnabled.value()          ? Enabled
               : controller.requiresApproval.value() ? RequiresApproval
                                                     : NotFound;
    }

    TemporaryFolder folder;
    fs::path path = folder.path() / "new config" / "autostart" / "tolvo.desktop";
    fs::path program = folder.path() / "tolvo";
    ManualLoop loop;
    BareDesktop desktop;
    PostedNotificationCenter notificationCenter;
    LoginItemSettingsProgram settingsProgram{desktop, desktop};
    XdgAutostartLoginItem item{path, program, "ubuntu:GNOME", settingsProgram};
    LaunchAtLoginController controller{loop, item, notificationCenter};
};

TEST_F(LaunchAtLogin, ComesAndGoesAsTheUserSays) {
    EXPECT_TRUE(controller.setEnabled(false));
    ASSERT_TRUE(controller.setEnabled(true));
    EXPECT_TRUE(controller.isEnabled.value());
    EXPECT_NE(text().find("\nExec=\"" + program.string() + "\"\n"), std::string::npos) << text();
    ASSERT_TRUE(controller.setEnabled(false));
    EXPECT_FALSE(controller.isEnabled.value());
    EXPECT_EQ(fileCount(), 0);
    controller.openLoginItemsSettings();
    EXPECT_EQ(desktop.opened, "file://" + folder.path().string() + "/new%20config/autostart");

    fs::remove_all(path.parent_path());
    std::ofstream(path.parent_path()) << "a file where the folder should be";
    const auto outcome = controller.setEnabled(true);
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().description(), "Failed to update login item: " + path.string() + " can't be written.");
    EXPECT_EQ(shownStatus(), NotFound);
}

TEST_F(LaunchAtLogin, AnEntryIsJudgedAsTheDesktopWouldAndReplacedForAReasonOnly) {
    const std::string head = "# edited\n[Other]\nHidden=true\n[Desktop Entry]\nType = Application\n";
    const std::string ours = head + "Exec=" + program.string() + " %u\n";
    enum class Entry { Stays, IsReplaced, IsKeptAside };
    using enum Entry;
    const std::vector<std::tuple<std::string, LoginItemStatus, Entry>> cases{
        {ours + "Hidden=false\nX-GNOME-Autostart-enabled=true\n", Enabled, Stays},
        {head + "Exec=env A=b tolvo\n[Other]\nHidden=true\n", Enabled, Stays},
        {ours + "OnlyShowIn=KDE;GNOME;\nNotShowIn=XFCE\n", Enabled, Stays},
        {ours + "Hidden=true\n", RequiresApproval, Stays},
        {ours + "X-GNOME-Autostart-enabled=false\r\n", RequiresApproval, Stays},
        {ours + "NotShowIn=KDE;GNOME\n", RequiresApproval, Stays},
        {ours + "OnlyShowIn=KDE;\n", RequiresApproval, Stays},
        {head + "Exec=\"/moved/away/tolvo\"\n", NotFound, IsReplaced},
        {head + "Exec=/usr/bin/other\n", NotFound, IsKeptAside},
        {"[Desktop Entry]\nExec=tolvo\n", NotFound, IsKeptAside},
        {"\x01\xff no entry", NotFound, IsKeptAside}};
    for (const auto& [before, status, entry] : cases) {
        fs::remove_all(path.parent_path());
        fs::create_directories(path.parent_path());
        std::ofstream(path) << before;
        EXPECT_EQ(shownStatus(), status) << before;
        // Off is what a foreign and a disabled entry are already.
        EXPECT_TRUE(status == Enabled || (controller.setEnabled(false) && text() == before)) << before;
        ASSERT_TRUE(controller.setEnabled(true)) << before;
        EXPECT_EQ(text() == before, entry == Stays) << before;
        EXPECT_EQ(fileCount(), entry == IsKeptAside ? 2 : 1) << before;
        EXPECT_EQ(shownStatus(), entry == Stays ? status : Enabled) << before;
    }
}

TEST(DesktopEntryTest, AnyProgramsPathSurvivesTheQuoting) {
    EXPECT_EQ(execValue("/a b/50%/$x\"\\y"), R"("/a b/50%%/\\$x\\"\\\\y")");
    for (const std::string program : {"/a b/tolvo", "/%f/100%", "/`$HOME`/\"q\"", "/a\\b\\", "/l\nm\t"}) {
        const auto entry = DesktopEntry::parse("[Desktop Entry]\nExec=" + execValue(program) +
                                               "\nTryExec=" + stringValue(program) + "\n");
        EXPECT_EQ(firstWordOfExec(entry->string("Exec").value()), program);
        EXPECT_EQ(entry->string("TryExec"), program);
    }
}

} // namespace
} // namespace tolvo::testing
