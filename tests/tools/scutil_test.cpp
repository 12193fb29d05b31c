#include "tests/tools/sandbox.h"

#include "platform/linux/unique_descriptor.h"

#include <gtest/gtest.h>

#include <sdbus-c++/sdbus-c++.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <filesystem>

namespace tolvo::test {
namespace {

struct ActiveConnection {
    std::string id;
    std::string type;
    std::uint32_t state;
};

/// A message bus with a NetworkManager of a few active connections on it.
class BusWithNetworkManager {
public:
    explicit BusWithNetworkManager(const std::vector<ActiveConnection>& connections) {
        const ToolRun daemon = run({"sh", "-c",
                                    "exec dbus-daemon --session --nopidfile --fork --print-pid "
                                    "--address=$DBUS_SYSTEM_BUS_ADDRESS 2>/dev/null"});
        if (daemon.status != 0)
            return;
        daemon_ = std::stoi(daemon.output);
        bus_ = sdbus::createSystemBusConnection("org.freedesktop.NetworkManager");
        offer(connections);
    }

    ~BusWithNetworkManager() {
        objects_.clear();
        bus_.reset();
        if (daemon_ > 0)
            ::kill(daemon_, SIGTERM);
    }

    bool isUp() const { return bus_ != nullptr; }

private:
    template<typename Value>
    static void addProperty(sdbus::IObject& object, const char* interfaceName, const char* name, Value value) {
        object.registerProperty(name).onInterface(interfaceName).withGetter([value] { return value; });
    }

    void offer(const std::vector<ActiveConnection>& connections) {
        std::vector<sdbus::ObjectPath> paths;
        for (const ActiveConnection& connection : connections) {
            const char* const active = "org.freedesktop.NetworkManager.Connection.Active";
            paths.emplace_back("/active/" + std::to_string(paths.size()));
            auto& object = *objects_.emplace_back(sdbus::createObject(*bus_, paths.back()));
            addProperty(object, active, "Uuid", "uuid-" + std::to_string(paths.size()));
            addProperty(object, active, "Id", connection.id);
            addProperty(object, active, "Type", connection.type);
            addProperty(object, active, "State", connection.state);
            addProperty(object, active, "Vpn", connection.type == "vpn");
            object.finishRegistration();
        }
        // A connection that ends between the two questions.
        paths.emplace_back("/active/gone");
        auto& manager = *objects_.emplace_back(sdbus::createObject(*bus_, "/org/freedesktop/NetworkManager"));
        addProperty(manager, "org.freedesktop.NetworkManager", "ActiveConnections", paths);
        manager.finishRegistration();
        bus_->enterEventLoopAsync();
    }

    pid_t daemon_ = -1;
    std::unique_ptr<sdbus::IConnection> bus_;
    std::vector<std::unique_ptr<sdbus::IObject>> objects_;
};

class Scutil : public testing::Test {
protected:
    void SetUp() override {
        char folder[] = "/tmp/tolvo-scutil-test-XXXXXX";
        ASSERT_NE(::mkdtemp(folder), nullptr);
        folder_ = folder;
        useBus("bus");
    }
    ~Scutil() override { std::filesystem::remove_all(folder_); }

    /// Its socket's path.
    std::string useBus(const std::string& name) const {
        const std::string path = folder_ + '/' + name;
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1);
        return path;
    }

    static void expectOnlyTheHeader(const char* what, double shortestMilliseconds, double longestMilliseconds) {
        const ToolRun result = run({toolPath("scutil"), "--nc", "list"});
        EXPECT_EQ(result.status, 0) << what;
        EXPECT_EQ(result.output, "Available network connection services in the current set (*=enabled):\n") << what;
        EXPECT_GE(result.wallMilliseconds, shortestMilliseconds) << what;
        EXPECT_LT(result.wallMilliseconds, longestMilliseconds) << what;
    }

private:
    std::string folder_;
};

TEST_F(Scutil, ListsTheVPNsOfNetworkManager) {
    const BusWithNetworkManager bus({{"Home \"LAN\"", "802-11-wireless", 2},
                                     {"The \"Office\"\n(Connected)", "vpn", 2},
                                     {"B\xC3\xBCro", "wireguard", 1},
                                     {"", "vpn", 3},
                                     {"Old", "vpn", 4}});
    if (!bus.isUp())
        GTEST_SKIP() << "needs dbus-daemon";
    EXPECT_EQ(run({toolPath("scutil"), "--nc", "list"}).output,
              "Available network connection services in the current set (*=enabled):\n"
              "* (Connected)       uuid-2 VPN (vpn) \"The 'Office''(Connected)\" [VPN:vpn]\n"
              "* (Connecting)      uuid-3 VPN (wireguard) \"B\xC3\xBCro\" [VPN:wireguard]\n"
              "* (Disconnecting)   uuid-4 VPN (vpn) \"\" [VPN:vpn]\n"
              "* (Disconnected)    uuid-5 VPN (vpn) \"Old\" [VPN:vpn]\n");
}

TEST_F(Scutil, EndsWithWhatTheKernelKnowsWhenTheBusFails) {
    expectOnlyTheHeader("no bus", 0, 500);
    sockaddr_un place{AF_UNIX, {}};
    useBus("silent").copy(place.sun_path, sizeof place.sun_path - 1);
    const UniqueDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(::listen(listener.get(), 0), 0);
    expectOnlyTheHeader("a bus that never answers", 800, 1300);
    // The first connection still waits in the queue, so the next blocks in connect().
    expectOnlyTheHeader("a bus whose queue is full", 800, 1300);
}

} // namespace
} // namespace tolvo::test
