#include "core/workspace_sleep_wake_observer.h"
#include "platform/linux/logind_sleep_notifier.h"
#include "platform/linux/poll_loop.h"
#include "tests/support/private_bus.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>

#include <optional>

namespace tolvo::testing {
namespace {

constexpr const char* path = "/org/freedesktop/login1";
constexpr const char* manager = "org.freedesktop.login1.Manager";

/// Answers what the notifier asks, and knows whether an inhibitor is held: its end of the pipe hangs up when not.
struct FakeLogind {
    FakeLogind(const std::string& address, bool isPreparing)
        : isPreparing(isPreparing), service(address, "org.freedesktop.login1", path, answer, this) {}

    void announce(bool nowPreparing) const {
        sd_bus_emit_signal(service.bus(), path, manager, "PrepareForSleep", "b", int(nowPreparing));
    }
    bool isInhibited() const {
        pollfd descriptor{inhibitor.get(), 0, 0};
        return inhibitor && ::poll(&descriptor, 1, 0) == 0;
    }
    static int answer(sd_bus_message* call, void* self, sd_bus_error*) {
        auto& fake = *static_cast<FakeLogind*>(self);
        if (!sd_bus_message_is_method_call(call, manager, "Inhibit"))
            return sd_bus_reply_method_return(call, "v", "b", int(fake.isPreparing));
        const char *what = "", *who = "", *why = "", *mode = "";
        sd_bus_message_read(call, "ssss", &what, &who, &why, &mode);
        EXPECT_EQ(std::string(what) + ' ' + mode, "sleep delay");
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
        fake.inhibitor = UniqueDescriptor(ends[0]);
        const UniqueDescriptor given(ends[1]);
        return sd_bus_reply_method_return(call, "h", given.get());
    }

    bool isPreparing;
    UniqueDescriptor inhibitor;
    BusService service;
};

struct LogindSleep : ::testing::Test {
    void SetUp() override {
        if (!bus.start())
            GTEST_SKIP() << "needs dbus-daemon";
        observer.onWillSleep = [this] { told += logind && logind->isInhibited() ? "sleep " : "late "; };
        observer.onDidWake = [this] { told += "wake "; };
        observer.startObserving();
        observer.startObserving();
    }

    /// Lets both sides work until it is so, for five seconds at most.
    bool becomes(const std::function<bool()>& isSo) {
        for (int i = 0; i < 1000 && !isSo(); ++i) {
            if (logind)
                logind->service.process();
            const auto end = loop.after(Seconds(0.005), [this] { loop.quit(); });
            loop.run();
        }
        return isSo();
    }
    bool becomesInhibited(bool isIt) {
        return becomes([=, this] { return logind->isInhibited() == isIt; });
    }

    PrivateBus bus;
    PollLoop loop;
    std::optional<FakeLogind> logind;
    std::optional<LogindSleepNotifier> notifier{std::in_place, loop, bus.address(),
                                                BusConnection::RetryDelays{0.01, 0.02}};
    WorkspaceSleepWakeObserver observer{*notifier};
    std::string told;
};

TEST_F(LogindSleep, SleepWaitsForTheObserversAndComesAsAPairWithTheWake) {
    logind.emplace(bus.address(), false);
    ASSERT_TRUE(becomesInhibited(true));
    for (const char* expected : {"sleep ", "sleep wake sleep "}) {
        for (const bool isPreparing : {false, true, true})
            logind->announce(isPreparing);
        ASSERT_TRUE(becomesInhibited(false));
        EXPECT_EQ(told, expected);
        for (const bool isPreparing : {false, false})
            logind->announce(isPreparing);
        ASSERT_TRUE(becomesInhibited(true));
    }
    observer.stopObserving();
    logind->announce(true);
    ASSERT_TRUE(becomesInhibited(false));
    EXPECT_EQ(told, "sleep wake sleep wake ");
}

TEST_F(LogindSleep, ABusOrALogindThatComesBackLosesAndDoublesNothing) {
    for (const bool isBusKilled : {true, false, true}) {
        told.clear();
        logind.emplace(bus.address(), false);
        ASSERT_TRUE(becomesInhibited(true));
        logind->announce(true);
        ASSERT_TRUE(becomes([this] { return told == "sleep "; }));
        logind.reset();
        if (isBusKilled)
            bus.kill();
        ASSERT_TRUE(becomes([this] { return told == "sleep wake "; }));
        ASSERT_TRUE(!isBusKilled || bus.start());
    }
    // Back in the middle of a sleep, whose signal was never heard; then the bus freezes.
    told.clear();
    logind.emplace(bus.address(), true);
    ASSERT_TRUE(becomes([this] { return !told.empty(); }));
    bus.freeze();
    const MonotonicTime start = loop.now();
    notifier.emplace(loop, bus.address());
    becomes([&] { return loop.now() > start + Seconds(0.1); });
    notifier.reset();
    EXPECT_LT(loop.now(), start + Seconds(1));
}

} // namespace
} // namespace tolvo::testing
