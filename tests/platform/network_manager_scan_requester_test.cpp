#include "platform/linux/network_manager_scan_requester.h"

#include "core/async/task_scope.h"
#include "platform/linux/poll_loop.h"
#include "tests/support/private_bus.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

namespace tolvo::testing {
namespace {

enum class Bus { Answers, IsSilent, Dies, Freezes, IsAbsent };

/// Takes a scan of wlan0 alone.
int answer(sd_bus_message* call, void* self, sd_bus_error*) {
    const auto& bus = *static_cast<const Bus*>(self);
    const std::string_view member = sd_bus_message_get_member(call);
    const char* name = "";
    if (bus == Bus::IsSilent)
        return 1;
    if (member == "RequestScan")
        return sd_bus_message_has_signature(call, "a{sv}") ? sd_bus_reply_method_return(call, "") : -EINVAL;
    sd_bus_message_read(call, "s", &name);
    if (name == std::string_view("eth0"))
        return sd_bus_reply_method_return(call, "s", "no path");
    if (name != std::string_view("wlan0"))
        return sd_bus_reply_method_errorf(call, "org.freedesktop.NetworkManager.UnknownDevice", "No device %s", name);
    return sd_bus_reply_method_return(call, "o", "/org/freedesktop/NetworkManager/Devices/3");
}

TEST(NetworkManagerScanRequester, EveryRequestEndsInAValueWhateverTheBusDoes) {
    struct {
        const char* interfaceName;
        Bus bus;
        const char* outcome;
    } const cases[] = {{"wlan0", Bus::Answers, "taken"},
                       {"wlan7", Bus::Answers, "No device wlan7"},
                       {"eth0", Bus::Answers, "It sent an answer that makes no sense."},
                       {"\xFF", Bus::Answers, "The interface has no proper name."},
                       {"wlan0", Bus::Dies, "Connection terminated"},
                       {"wlan0", Bus::IsAbsent, "The system bus is not there."},
                       {"wlan0", Bus::IsSilent, "There was no answer in time."},
                       {"wlan0", Bus::Freezes, "There was no answer in time."}};
    for (const auto& [interfaceName, busState, expected] : cases) {
        PrivateBus bus;
        Bus state = busState == Bus::Dies || busState == Bus::Freezes ? Bus::IsSilent : busState;
        std::optional<BusService> service;
        if (state != Bus::IsAbsent) {
            if (!bus.start())
                GTEST_SKIP() << "needs dbus-daemon";
            service.emplace(bus.address(), "org.freedesktop.NetworkManager", "/", answer, &state);
        }
        PollLoop loop;
        NetworkManagerScanRequester requester(loop, bus.address(), Seconds(0.3));
        std::optional<std::string> outcome;
        const auto request = [](WiFiScanRequesting& asked, std::string name, auto& result) -> Task<void> {
            const auto taken = co_await asked.requestScan(std::move(name));
            result = taken ? "taken" : taken.error();
        };
        TaskScope tasks(loop);
        tasks.start(request(requester, interfaceName, outcome));
        const MonotonicTime start = loop.now();
        for (int i = 0; !outcome && loop.now() < start + Seconds(2); ++i) {
            if (service && busState != Bus::Freezes)
                service->process();
            if (i == 20 && busState == Bus::Dies)
                bus.kill();
            if (i == 0 && busState == Bus::Freezes)
                bus.freeze();
            const auto end = loop.after(Seconds(0.005), [&] { loop.quit(); });
            loop.run();
        }
        EXPECT_EQ(outcome, expected);
        if (busState == Bus::Freezes)
            bus.kill();
    }
}

} // namespace
} // namespace tolvo::testing
