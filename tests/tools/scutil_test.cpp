#include "tests/tools/sandbox.h"
#include "tools/vpn_service.h"

#include "platform/linux/unique_descriptor.h"

#include <gtest/gtest.h>

#include <sdbus-c++/sdbus-c++.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <thread>

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
        std::string address = std::string("--address=") + std::getenv("DBUS_SYSTEM_BUS_ADDRESS");
        std::vector<std::string> words{"dbus-daemon", "--session", "--nofork", "--nopidfile", address};
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (::posix_spawnp(&daemon_, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0)
            return;
        for (int attempt = 0; attempt < 200 && !bus_; ++attempt) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            try {
                bus_ = sdbus::createSystemBusConnection("org.freedesktop.NetworkManager");
            } catch (const sdbus::Error&) {
                // It doesn't listen yet.
            }
        }
        if (bus_)
            offer(connections);
    }

    ~BusWithNetworkManager() {
        objects_.clear();
        bus_.reset();
        if (daemon_ > 0 && ::kill(daemon_, SIGTERM) == 0)
            ::waitpid(daemon_, nullptr, 0);
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
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address().c_str(), 1);
    }
    ~Scutil() override { std::filesystem::remove_all(folder_); }

    std::string socketPath() const { return folder_ + "/bus"; }
    std::string address() const { return "unix:path=" + socketPath(); }

    static void expectOnlyTheHeader(const char* what, double longestMilliseconds) {
        const ToolRun result = run({toolPath("scutil"), "--nc", "list"});
        EXPECT_EQ(result.status, 0) << what;
        EXPECT_EQ(result.output, "Available network connection services in the current set (*=enabled):\n") << what;
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
    expectOnlyTheHeader("no bus", 500);
    {
        const BusWithNetworkManager bus({});
        if (bus.isUp())
            expectOnlyTheHeader("no VPN", 500);
    }
    std::filesystem::remove(socketPath());
    const UniqueDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    std::strcpy(place.sun_path, socketPath().c_str());
    ASSERT_EQ(::bind(listener.get(), reinterpret_cast<sockaddr*>(&place), sizeof place), 0);
    ASSERT_EQ(::listen(listener.get(), 0), 0);
    expectOnlyTheHeader("a bus that never answers", 1300);
    // The first connection still waits in the queue, so the next blocks in connect().
    expectOnlyTheHeader("a bus whose queue is full", 1300);
}

TEST(WireGuard, ALinkThatIsUpIsAService) {
    const std::vector<tools::Link> links{{3, "wg0", 1, 1420, "wireguard", false}};
    EXPECT_EQ(tools::listServices(tools::wireGuardServices(links)),
              "* (Connected)       wg0 VPN (wireguard) \"wg0\" [VPN:wireguard]\n");
}

} // namespace
} // namespace tolvo::test
