#include "core/monitoring_lifecycle_controller.h"
#include "core/task_sleeper.h"
#include "tests/support/manual_loop.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tolvo::testing {
namespace {

using Identity = std::optional<NetworkIdentity>;

/// Writes down what it is told: start, stop, reset or poll, and + or - for the fast or the slow interval. Its reset
/// clears the published identity, as the Wi-Fi monitor's does.
struct RecordingMonitor final : AdaptiveMonitoringControlling {
    RecordingMonitor(const char* signs, std::string& log, Published<Identity>& identity)
        : signs(signs), log(log), identity(identity) {}
    void startMonitoring() override { log += signs[0]; }
    void stopMonitoring() override { log += signs[1]; }
    void refreshNow() override { log += signs[2]; }
    void updatePollInterval(double seconds) override { log += seconds == 0.5 ? '+' : seconds == 4 ? '-' : '?'; }
    void resetTransientState() override {
        log += signs[3];
        identity.set(std::nullopt);
    }
    const char* signs;
    std::string& log;
    Published<Identity>& identity;
};

struct World {
    /// Words are seconds, interface/name/access point/address of an identity (- is absent), or events.
    void run(const std::string& script) {
        std::istringstream words(script);
        for (std::string word; words >> word;) {
            if (std::isdigit(word.front()))
                loop.advance(std::stod(word));
            else if (word == "lost")
                identity.set(std::nullopt);
            else if (word.contains('/'))
                identity.set(identityOf(word));
            else
                act(word);
        }
    }
    static NetworkIdentity identityOf(const std::string& text) {
        std::istringstream stream(text);
        std::string fields[4];
        for (std::string& field : fields)
            std::getline(stream, field, '/');
        const auto optional = [](const std::string& field) {
            return field == "-" ? std::nullopt : std::optional(field);
        };
        return {fields[0], optional(fields[1]), optional(fields[2]), optional(fields[3])};
    }
    void act(const std::string& word) {
        if (word == "enable" || word == "disable")
            controller.setMonitoringEnabled(word == "enable");
        else if (word == "saving" || word == "full")
            controller.setBatteryFriendly(word == "saving");
        else if (word == "change")
            network.onNetworkChange();
        else if (word == "sleep" || word == "wake")
            (word == "sleep" ? power.onWillSleep : power.onDidWake)();
        else
            controller.isPopoverPresented.set(word == "open");
        if (word == "open" || word == "close")
            controller.applyPollInterval();
        if (word == "open")
            controller.refreshMonitorsNow();
    }

    ManualLoop loop;
    TaskSleeper sleeper;
    InMemoryAppSettingsStore settings;
    NoOpNetworkChangeObserver network;
    NoOpSleepWakeObserver power;
    Published<Identity> identity;
    std::string log;
    RecordingMonitor a{"SXPR", log, identity};
    RecordingMonitor b{"sxpr", log, identity};
    MonitoringLifecycleController controller{loop, {}, {a, b}, network, power, sleeper, settings, &identity};
};

TEST(Lifecycle, MonitorsHearInOrderWhatFollowsFromEachEvent) {
    const struct {
        const char* script;
        const char* told;
        const char* status = "active in background mode.";
    } cases[] = {{"change 29.9", "Rr++Pp"},
                 {"change 30", "Rr++Pp--"},
                 {"change 20 change 29.9", "Rr++PpRr++Pp"},
                 {"change 20 change 30", "Rr++PpRr++Pp--"},
                 {"open", "++Pp", "active in detailed mode."},
                 {"open close", "++Pp--"},
                 {"open change close 29 1", "++PpRr++Pp++--"},
                 {"full close", "++++", "active in high-frequency mode."},
                 {"full open change 100", "++++PpRr++Pp", "active in high-frequency mode."},
                 {"change full saving 100", "Rr++Pp++--"},
                 {"change disable enable enable 100", "Rr++PpXxSs--"},
                 {"disable change sleep wake close saving w/h/a/1 w/h/b/1 100", "Xx", "is paused."},
                 {"wake", ""},
                 {"sleep sleep", "Xx"},
                 {"sleep wake wake", "XxRrSs--Pp"},
                 {"sleep disable enable wake", "XxXxSs--"},
                 {"lost w/h/a/1 w/h/a/1 lost lost", ""},
                 {"w/h/a/1 w/h/a/- w/h/a/1 w/h/a/-", ""},
                 {"w/h/a/1 w/h/a/2", "Rr++Pp"},
                 {"w/h/a/1 w/h/b/1 w/h/b/1", "Rr++Pp"},
                 {"w/h/a/1 w/-/a/1", "Rr++Pp"},
                 {"w/h/a/1 u/h/a/1", "Rr++Pp"},
                 {"w/h/a/1 lost w/h/a/1 w/h/a/1", "Rr++Pp"},
                 {"w/h/a/1 change w/h/a/1", "Rr++Pp"},
                 {"w/h/a/1 sleep wake w/h/a/1", "XxRrSs--Pp"},
                 {"w/h/a/1 sleep wake w/h/b/1", "XxRrSs--PpRr++Pp"}};
    for (const auto& [script, told, status] : cases) {
        World world;
        world.controller.start();
        EXPECT_EQ(world.log, "Ss--");
        world.log.clear();
        world.run(script);
        EXPECT_EQ(world.log, told) << script;
        EXPECT_EQ(world.controller.statusMessage(), std::string("Monitoring ") + status) << script;
        // What the user switched is stored; the end of the program is no switch.
        const bool isEnabled = world.controller.isMonitoringEnabled.value();
        world.controller.shutdown();
        EXPECT_EQ(world.settings.monitoringEnabled(), isEnabled) << script;
        EXPECT_EQ(world.settings.batteryFriendly(), world.controller.isBatteryFriendly.value()) << script;
        EXPECT_FALSE(world.controller.isMonitoringEnabled.value());
    }
}

} // namespace
} // namespace tolvo::testing
