#include "tests/tools/sandbox.h"

#include "platform/linux/unique_descriptor.h"
#include "tests/support/private_bus.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <string_view>
#include <thread>

namespace tolvo::test {
namespace {

constexpr struct {
    const char* id;
    const char* type;
    std::uint32_t state;
} activeConnections[] = {{"Home \"LAN\"", "802-11-wireless", 2},
                         {"The \"Office\"\n(Connected)", "vpn", 2},
                         {"B\xC3\xBCro", "wireguard", 1},
                         {"", "vpn", 3},
                         {"Old", "vpn", 4}};

/// As NetworkManager does. Its last connection ends between the two questions.
int answer(sd_bus_message* call, void*, sd_bus_error*) {
    if (sd_bus_message_get_member(call) == std::string_view("Get")) {
        return sd_bus_reply_method_return(call, "v", "ao", 6, "/active/0", "/active/1", "/active/2", "/active/3",
                                          "/active/4", "/active/5");
    }
    const auto index = static_cast<std::size_t>(std::string_view(sd_bus_message_get_path(call)).back() - '0');
    if (index >= std::size(activeConnections))
        return -ENOENT;
    const auto& [id, type, state] = activeConnections[index];
    return sd_bus_reply_method_return(call, "a{sv}", 5, "Uuid", "s", ("uuid-" + std::to_string(index)).c_str(), "Id",
                                      "s", id, "Vpn", "b", 1, "Type", "s", type, "State", "u", state);
}

TEST(Scutil, ListsTheVPNsOfNetworkManager) {
    testing::PrivateBus bus;
    if (!bus.start())
        GTEST_SKIP() << "needs dbus-daemon";
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1);
    const testing::BusService service(bus.address(), "org.freedesktop.NetworkManager", "/", answer, nullptr);
    const std::jthread serving([&](const std::stop_token& stop) {
        for (; !stop.stop_requested(); sd_bus_wait(service.bus(), 10'000))
            service.process();
    });
    EXPECT_EQ(run({toolPath("scutil"), "--nc", "list"}).output,
              "Available network connection services in the current set (*=enabled):\n"
              "* (Connected)       uuid-1 VPN (vpn) \"The 'Office''(Connected)\" [VPN:vpn]\n"
              "* (Connecting)      uuid-2 VPN (wireguard) \"B\xC3\xBCro\" [VPN:wireguard]\n"
              "* (Disconnecting)   uuid-3 VPN (vpn) \"\" [VPN:vpn]\n"
              "* (Disconnected)    uuid-4 VPN (vpn) \"Old\" [VPN:vpn]\n");
}

TEST(Scutil, EndsWithWhatTheKernelKnowsWhenTheBusFails) {
    const auto expectOnlyTheHeader = [](const char* what, double shortestMilliseconds, double longestMilliseconds) {
        const ToolRun result = run({toolPath("scutil"), "--nc", "list"});
        EXPECT_EQ(result.status, 0) << what;
        EXPECT_EQ(result.output, "Available network connection services in the current set (*=enabled):\n") << what;
        EXPECT_GE(result.wallMilliseconds, shortestMilliseconds) << what;
        EXPECT_LT(result.wallMilliseconds, longestMilliseconds) << what;
    };
    const testing::PrivateBus bus;
    ::setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1);
    expectOnlyTheHeader("no bus", 0, 800);
    sockaddr_un place{AF_UNIX, {}};
    bus.address().substr(std::string_view("unix:path=").size()).copy(place.sun_path, sizeof place.sun_path - 1);
    const UniqueDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(::listen(listener.get(), 0), 0);
    expectOnlyTheHeader("a bus that never answers", 800, 1900);
    // The first connection still waits in the queue, so the next blocks in connect().
    expectOnlyTheHeader("a bus whose queue is full", 800, 1900);
}

} // namespace
} // namespace tolvo::test
