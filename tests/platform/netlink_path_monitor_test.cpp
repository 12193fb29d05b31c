#include "platform/linux/netlink_path_monitor.h"
#include "platform/linux/poll_loop.h"

#include <gtest/gtest.h>
#include <sched.h>

#include <cstdlib>
#include <fstream>

namespace tolvo::testing {
namespace {

/// The kinds of interface in use, by letter: Wi-Fi, Ethernet, cellular, other.
std::string signsOf(const NetworkPath& path) {
    const std::pair<bool, const char*> kinds[] = {
        {path.usesWiFi, "w"}, {path.usesWiredEthernet, "e"}, {path.usesCellular, "c"}, {path.usesOther, "o"}};
    std::string signs;
    for (const auto& [isUsed, sign] : kinds)
        signs += isUsed ? sign : "";
    EXPECT_EQ(signs.empty(), path.status == PathStatus::Unsatisfied);
    return signs;
}

TEST(NetlinkPathMonitor, FollowsTheKernelThroughStormsAndOverruns) {
    const auto ip = [](const std::string& command) { return std::system(("ip " + command).c_str()) == 0; };
    if (::unshare(CLONE_NEWNET) != 0 || !ip("link set lo up"))
        GTEST_SKIP() << "needs root and iproute2 for a network namespace of its own";
    char pattern[] = "/tmp/tolvo-path-XXXXXX";
    const std::filesystem::path directory = ::mkdtemp(pattern);
    for (const std::string type : {"wlan", "wwan", "bluetooth"}) {
        std::filesystem::create_directory(directory / (type + "0"));
        std::ofstream(directory / (type + "0") / "uevent") << "IFINDEX=1\nDEVTYPE=" << type << '\n';
    }
    std::ofstream storm(directory / "storm");
    for (int i = 0; i < 8000; ++i)
        storm << "addr " << (i % 2 ? "del" : "add") << " 127.0.0.9/32 dev lo\n";
    storm << "link del eth1\n" << std::flush;
    const std::string v6 = "-6 route add default dev eth0", rename = "link set eth0 name ";
    const std::pair<const char*, std::vector<std::string>> steps[] = {
        {"", {}},
        {"e",
         {"link add eth0 type veth peer far", "link set far up", "link set eth0 up", "route add default dev eth0"}},
        // The far end goes: the routes stay and are marked.
        {"", {"link set far down"}},
        {"e", {"link set far up"}},
        // The link goes down: the kernel drops its routes without an event.
        {"", {"link set eth0 down"}},
        {"e", {"link set eth0 up", v6}},
        {"o",
         {"link set eth0 down", rename + "bluetooth0", "link set bluetooth0 up", "route add default dev bluetooth0"}},
        {"c",
         {"link set bluetooth0 down", "link set bluetooth0 name wwan0", "link set wwan0 up",
          "route add default dev wwan0"}},
        {"w", {"link set wwan0 down", "link set wwan0 name wlan0", "link set wlan0 up", "route add default dev wlan0"}},
        {"w",
         {"link add tun0 type vxlan id 5 dev lo dstport 4789", "link set tun0 up",
          "route add default dev tun0 table 7"}},
        {"wo", {"rule add not fwmark 51820 table 7"}},
        {"w", {"rule del table 7", "rule add from 10.1.1.1 table 7", "rule add fwmark 3 table 7"}},
        {"wo", {"route add 0.0.0.0/1 dev tun0", "route add 128.0.0.0/1 dev tun0"}},
        {"w", {"link del tun0"}},
        {"we",
         {"link add eth1 type veth peer far1", "link set eth1 up", "link set far1 up",
          "route replace default nexthop dev wlan0 nexthop dev eth1"}},
        // Behind a bridge a wire stays a wire, and the ends of containers in it change nothing.
        {"e",
         {"link add br0 type bridge", "link set br0 up", "link set eth1 master br0", "route replace default dev br0"}},
        {"", {"-batch " + (directory / "storm").string()}},
    };
    PollLoop loop;
    NetlinkPathMonitor monitor(loop, directory);
    std::vector<std::string> told;
    monitor.start([&](const NetworkPath& path) { told.push_back(signsOf(path)); });
    const auto runFor = [&](double seconds) {
        const auto end = loop.after(Seconds(seconds), [&] { loop.quit(); });
        loop.run();
    };
    for (const auto& [path, commands] : steps) {
        told.clear();
        const MonotonicTime began = loop.now();
        for (const std::string& command : commands)
            EXPECT_TRUE(ip(command)) << command;
        for (int i = 0; i < 200 && (told.empty() || told.back() != path); ++i)
            runFor(0.025);
        EXPECT_EQ(told.empty() ? "nothing" : told.back(), path) << (commands.empty() ? "start" : commands.back());
        // However many events there were, one evaluation each tenth of a second.
        EXPECT_LE(static_cast<double>(told.size()), Seconds(loop.now() - began).count() / 0.1 + 1);
    }
    monitor.cancel();
    told.clear();
    ip("link set lo down");
    runFor(0.3);
    EXPECT_TRUE(told.empty());
    std::filesystem::remove_all(directory);
}

} // namespace
} // namespace tolvo::testing
