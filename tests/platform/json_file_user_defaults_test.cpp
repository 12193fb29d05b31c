#include "core/colorful_icon_settings_providing.h"
#include "core/user_defaults_app_settings_store.h"
#include "platform/linux/json_file_user_defaults.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <sys/eventfd.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <functional>
#include <random>
#include <thread>

namespace tolvo::testing {
namespace {

namespace fs = std::filesystem;

class JsonFileUserDefaultsTest : public ::testing::Test {
protected:
    void write(const std::string& text) { std::ofstream(path, std::ios::binary) << text; }
    static std::string contentsOf(const fs::path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::ptrdiff_t fileCount() const {
        const fs::directory_iterator files(path.parent_path());
        return std::distance(begin(files), end(files));
    }
    static pid_t inChild(const std::function<void()>& work) {
        const pid_t child = ::fork();
        if (child == 0) {
            work();
            ::_exit(0);
        }
        return child;
    }

    TemporaryFolder folder;
    fs::path path = folder.path() / "settings.json";
    JsonFileUserDefaults settings{path};
};

TEST_F(JsonFileUserDefaultsTest, SettingsHaveTheirDefaultsTypesAndKeys) {
    ::setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
    JsonFileUserDefaults database(JsonFileUserDefaults::standardPath());
    UserDefaultsAppSettingsStore store(database);
    path = folder.path() / "tolvo" / "settings.json";
    const auto all = [](const AppSettingsStoring& each) {
        return std::tuple(each.monitoringEnabled(), each.batteryFriendly(),
                          UserDefaultsColorfulIconSettingsProvider(each).colorfulIconEnabled(),
                          each.internetPingTarget(), each.lastSSID().value_or("none"));
    };
    EXPECT_EQ(all(store), std::tuple(true, true, false, "1.1.1.1", "none"));
    EXPECT_FALSE(fs::exists(path));
    store.setMonitoringEnabled(false);
    store.setBatteryFriendly(false);
    store.setColorfulIcon(true);
    store.setInternetPingTarget(" 9.9.9.9\r\n");
    store.setLastSSID(" caf\xc3\xa9\xff \n");
    EXPECT_EQ(all(store), std::tuple(false, false, true, "9.9.9.9", "caf\xc3\xa9\xef\xbf\xbd"));
    EXPECT_EQ(contentsOf(path),
              "{\n  \"batteryFriendly\": false,\n  \"colorfulIcon\": true,\n  \"internetPingTarget\": "
              "\" 9.9.9.9\\r\\n\",\n  \"lastSSID\": \"caf\xc3\xa9\xef\xbf\xbd\",\n  "
              "\"monitoringEnabled\": false\n}\n");
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    store.setLastSSID(" \t\n");
    EXPECT_EQ(store.lastSSID(), std::nullopt);

    write(R"({"monitoringEnabled": "yes", "batteryFriendly": 1, "internetPingTarget": " ", "lastSSID": null})");
    EXPECT_EQ(all(store), std::tuple(false, false, false, "1.1.1.1", "none"));
}

TEST_F(JsonFileUserDefaultsTest, EditsFromOutsideAreSeenAtOnceAndNeverUndone) {
    for (const char* edit : {"a", "b", "c"}) {
        write(std::string(R"({"other": [{}, 2.5, null], "mine": ")") + edit + "\"}");
        EXPECT_EQ(settings.stringForKey("mine"), edit);
    }
    settings.set(true, "flag");
    EXPECT_EQ(contentsOf(path),
              "{\n  \"flag\": true,\n  \"mine\": \"c\",\n  \"other\": [\n    {},\n    2.5,\n    null\n"
              "  ]\n}\n");
    fs::remove(path);
    EXPECT_FALSE(settings.boolForKey("flag"));
}

TEST_F(JsonFileUserDefaultsTest, BrokenFilesAreKeptAsideOnceAKeyIsSet) {
    const std::string nested(100'000, '['), closed(100'000, ']');
    const std::vector<std::string> broken{std::string(10'000'000, '\x80'),
                                          nested,
                                          "{\"a\":" + nested + closed + "}",
                                          "{\"flag\": false, \"a\": \"" + std::string(2'000'000, 'x') + "\"}",
                                          "[1, 2]",
                                          "{\"flag\": false, \"huge\": 1e999}",
                                          "{\"flag\": false",
                                          std::string("\0\0\0", 3)};
    settings.registerDefaults({{"flag", true}});
    for (std::size_t i = 0; i < broken.size(); ++i) {
        write(broken[i]);
        EXPECT_TRUE(settings.boolForKey("flag"));
        settings.removeObject("flag");
        EXPECT_TRUE(contentsOf(path) == broken[i]);
        settings.set("new", "text");
        EXPECT_EQ(contentsOf(path), "{\n  \"text\": \"new\"\n}\n");
        const std::string aside = path.string() + ".broken" + (i == 0 ? "" : "-" + std::to_string(i + 1));
        EXPECT_TRUE(contentsOf(aside) == broken[i]) << i;
    }
    EXPECT_EQ(fileCount(), std::ssize(broken) + 1);
}

TEST_F(JsonFileUserDefaultsTest, SymbolicLinksStay) {
    const fs::path target = folder.path() / "dotfiles" / "tolvo.json";
    fs::create_directory(target.parent_path());
    fs::create_symlink("dotfiles/tolvo.json", path);
    for (const char* value : {"made", "replaced"}) {
        settings.set(value, "text");
        EXPECT_TRUE(fs::is_symlink(path));
        EXPECT_EQ(JsonFileUserDefaults(target).stringForKey("text"), value);
    }
}

TEST_F(JsonFileUserDefaultsTest, ValueThatCannotBeWrittenHoldsInMemory) {
    const fs::path loop = folder.path() / "loop.json", pipe = folder.path() / "pipe.json";
    fs::create_symlink(loop, loop);
    ::mkfifo(pipe.c_str(), 0600);
    const std::vector<std::optional<fs::path>> paths{
        std::nullopt, "/proc/a/b.json", "/dev/null/a/b.json", "/nowhere/at/all/tolvo.json", folder.path(), loop, pipe};
    for (const auto& each : paths) {
        JsonFileUserDefaults database(each);
        database.registerDefaults({{"text", "default"}});
        database.set("kept", "text");
        EXPECT_EQ(database.stringForKey("text"), "kept") << each.value_or("none");
        database.removeObject("text");
        EXPECT_EQ(database.stringForKey("text"), "default");
    }
    EXPECT_FALSE(fs::exists("/nowhere"));
}

TEST_F(JsonFileUserDefaultsTest, FullDiskLosesNothingAndLeavesNothing) {
    write(R"({"text": "old"})");
    rlimit usual{};
    ::getrlimit(RLIMIT_FSIZE, &usual);
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{8, usual.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    settings.set("new", "text");
    ::setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(contentsOf(path), R"({"text": "old"})");
    EXPECT_EQ(fileCount(), 1);
    EXPECT_EQ(settings.stringForKey("text"), "new");
    settings.set(true, "flag");
    EXPECT_EQ(JsonFileUserDefaults(path).stringForKey("text"), "new");
}

TEST_F(JsonFileUserDefaultsTest, ProcessesThatWriteAtTheSameTimeUndoNothing) {
    const auto writeKeys = [&](char prefix) {
        JsonFileUserDefaults own(path);
        for (int i = 0; i < 150; ++i)
            own.set(true, prefix + std::to_string(i));
        // A busy machine may refuse the lock, and what was refused is written with the next value.
        const std::string last = prefix + std::string("149");
        while (contentsOf(path).find('"' + last + '"') == std::string::npos)
            own.set(true, last);
    };
    const pid_t child = inChild([&] { writeKeys('a'); });
    writeKeys('b');
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(parseSettings(contentsOf(path))->size(), 300u);
}

TEST_F(JsonFileUserDefaultsTest, ThousandKillsDuringWritesLeaveTheOldOrTheNewValue) {
    const std::array<std::string, 2> values{std::string(100, 'a'), std::string(9'000, 'b')};
    write(R"({"unknown": 1, "text": ")" + values[0] + "\"}");
    std::minstd_rand random(1);
    std::array<int, 2> seen{};
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(8);
    for (std::size_t kills = 0; kills < 1'000 && std::chrono::steady_clock::now() < deadline; ++kills) {
        const UniqueDescriptor written(::eventfd(0, 0));
        const pid_t child = inChild([&] {
            JsonFileUserDefaults own(path);
            for (std::size_t i = kills;; ++i) {
                own.set(values[i % 2], "text");
                ::eventfd_write(written.get(), 1);
            }
        });
        // On a busy machine it may take a while to begin.
        eventfd_t count = 0;
        ::eventfd_read(written.get(), &count);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 5'000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        const auto stored = parseSettings(contentsOf(path)).value();
        ASSERT_TRUE(stored.contains("unknown"));
        const bool isSecond = stored.at("text") == SettingsValue(values[1]);
        ASSERT_TRUE(isSecond || stored.at("text") == SettingsValue(values[0]));
        ++seen[isSecond ? 1 : 0];
    }
    EXPECT_GT(std::min(seen[0], seen[1]), 0) << "the kills came while nothing was written";
    settings.set("end", "text");
    EXPECT_EQ(fileCount(), 1);
}

} // namespace
} // namespace tolvo::testing
