#include "platform/linux/freedesktop_user_notifications.h"
#include "tests/support/private_bus.h"
#include "tests/support/run_on_poll_loop.h"

#include <gtest/gtest.h>

#include <optional>

namespace tolvo::testing {
namespace {

constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* name = "org.freedesktop.Notifications";

/// A desktop's notification service: notes what it is to show, and gives ids from 40 on.
struct FakeNotificationService {
    FakeNotificationService(const std::string& address, bool canShowMarkup)
        : canShowMarkup(canShowMarkup), service(address, name, path, answer, this) {}

    void click(unsigned id, const char* action) {
        sd_bus_emit_signal(service.bus(), path, name, "ActionInvoked", "us", id, action);
    }
    void close(unsigned id) { sd_bus_emit_signal(service.bus(), path, name, "NotificationClosed", "uu", id, 2U); }

    static int answer(sd_bus_message* call, void* self, sd_bus_error*) {
        auto& fake = *static_cast<FakeNotificationService*>(self);
        if (sd_bus_message_is_method_call(call, name, "GetCapabilities"))
            return sd_bus_reply_method_return(call, "as", 2, "actions", fake.canShowMarkup ? "body-markup" : "body");
        const char *program = "", *icon = "", *title = "", *body = "", *action = "", *label = "";
        unsigned replaced = 0;
        EXPECT_GT(sd_bus_message_read(call, "susssas", &program, &replaced, &icon, &title, &body, 2, &action, &label),
                  0);
        EXPECT_GT(sd_bus_message_skip(call, "a{sv}i"), 0);
        EXPECT_EQ(std::string(action), "default");
        fake.shown += std::string(title) + '|' + body + '|' + std::to_string(replaced) + '\n';
        return sd_bus_reply_method_return(call, "u", replaced ? replaced : fake.nextID++);
    }

    bool canShowMarkup;
    BusService service;
    unsigned nextID = 40;
    std::string shown;
};

struct UserNotificationsOnABus : ::testing::Test {
    void SetUp() override {
        if (!bus.start())
            GTEST_SKIP() << "needs dbus-daemon";
        notifications->onResponse = [this](const NotificationUserInfo& userInfo) {
            clicked += userInfo.at("url") + ' ';
        };
    }

    /// Lets both sides work until the service was given this and nothing else to show.
    bool isShown(const std::string& expected) {
        const bool isIt = runUntil(loop, [&] { return work() && desktop->shown == expected; });
        return isIt || (ADD_FAILURE() << desktop->shown, false);
    }
    bool work() {
        if (desktop)
            desktop->service.process();
        return true;
    }
    void workFor(double seconds) {
        runUntil(loop, [this] { return !work(); }, seconds);
    }
    void add(const std::string& identifier, const std::string& body) {
        notifications->add({identifier, {"Title", body, true, {{"url", "url-of-" + identifier}}}});
    }

    PrivateBus bus;
    PollLoop loop;
    std::optional<FakeNotificationService> desktop;
    std::optional<FreedesktopUserNotifications> notifications{std::in_place, loop, bus.address(),
                                                              BusConnection::RetryDelays{0.01, 0.02}};
    std::string clicked;
};

TEST_F(UserNotificationsOnABus, AClickIsHeardWhileTheNotificationIsThereAndIsOurs) {
    desktop.emplace(bus.address(), false);
    add("a", "1 < 2 & <b>3</b>");
    ASSERT_TRUE(isShown("Title|1 < 2 & <b>3</b>|0\n"));
    desktop->shown.clear();
    add("b", "second");
    ASSERT_TRUE(isShown("Title|second|0\n"));
    desktop->shown.clear();
    desktop->click(77, "default");
    desktop->click(41, "dismiss");
    desktop->click(41, "default");
    desktop->close(41);
    desktop->click(41, "default");
    desktop->click(40, "default");
    add("a", "again");
    ASSERT_TRUE(isShown("Title|again|40\n")) << "in the first one's place";
    EXPECT_EQ(clicked, "url-of-b url-of-a ");
}

TEST_F(UserNotificationsOnABus, WhatNobodyCouldShowIsShownOnceWhenSomebodyCan) {
    add("a", "x < y");
    workFor(0.1);
    desktop.emplace(bus.address(), true);
    ASSERT_TRUE(isShown("Title|x &lt; y|0\n"));

    // The service ends and is started again: what it showed is gone with it, and its numbers begin anew.
    desktop.reset();
    workFor(0.05);
    desktop.emplace(bus.address(), true);
    add("b", "b");
    ASSERT_TRUE(isShown("Title|b|0\n"));
    desktop->click(40, "default");
    ASSERT_TRUE(runUntil(loop, [this] { return work() && !clicked.empty(); }));
    EXPECT_EQ(clicked, "url-of-b ");

    // The whole bus ends, and comes back.
    desktop.reset();
    bus.kill();
    workFor(0.05);
    add("c", "c");
    ASSERT_TRUE(bus.start());
    desktop.emplace(bus.address(), true);
    ASSERT_TRUE(isShown("Title|c|0\n"));
}

} // namespace
} // namespace tolvo::testing
