#include "tests/tools/sandbox.h"

#include "platform/linux/inet_address_parser.h"
#include "platform/linux/unique_descriptor.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/vpn_activity.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>

#include <cstring>
#include <fstream>
#include <regex>

namespace tolvo::test {
namespace {

TEST(Tools, BadArgumentsGetTheUsage) {
    for (const char* words :
         {"../tolvo-tools", "../tolvo-tools nettop", "ping -c 2 -W 1500 EMPTY", "ping -c 0 ::1", "ping -c 2x ::1",
          "ping -W 5 ::1", "ping -c 2", "ping6 -c 1 -W 5 ::1", "dig +time=0 +tries=1 a.test", "dig +time=1 @127.0.0.1",
          "dig +time=1 a.test b.test", "dig +time=1 +tries=1 EMPTY", "netstat -rn -f inet4", "netstat", "scutil --nc",
          "ifconfig -a", "ipconfig getifaddr EMPTY", "ipconfig getoption lo mtu"}) {
        const ToolRun result = runTool(words);
        EXPECT_EQ(result.status, 64) << words;
        EXPECT_EQ(result.output, "") << words;
        EXPECT_TRUE(result.errors.starts_with("usage: ")) << result.errors;
    }
}

class ToolsInSandbox : public testing::Test {
protected:
    void SetUp() override {
        if (const auto problem = enterSandbox())
            GTEST_SKIP() << *problem;
    }
};

TEST_F(ToolsInSandbox, PingBecomesTheInstalledOne) {
    struct Case {
        const char* words;
        int status;
        const char* output;
    };
    for (const Case& each : {Case{"ping -c 2 -W 1500 127.0.0.1", 0, " 0% packet loss"},
                             Case{"ping6 -c 1 ::1", 0, "rtt min/avg/max/mdev = "},
                             Case{"ping -c 1 -W 1 192.0.2.1", 2, ""}, Case{"ping -c 1 -W 1 -f", 2, ""}}) {
        const ToolRun result = runTool(each.words);
        EXPECT_EQ(result.status, each.status) << result.errors;
        EXPECT_TRUE(result.output.contains(each.output)) << result.output;
    }
    ASSERT_EQ(::mount("/dev/null", "/usr/bin/ping", nullptr, MS_BIND, nullptr), 0);
    const ToolRun result = runTool("ping -c 1 127.0.0.1");
    ::umount("/usr/bin/ping");
    EXPECT_EQ(result.status, 69);
    EXPECT_EQ(result.errors, "ping: starting the installed ping: Permission denied\n");
}

TEST_F(ToolsInSandbox, PingsAddressesItself) {
    // Without an installed ping: nobody else can have sent these.
    ASSERT_EQ(::mount("/dev/null", "/usr/bin/ping", nullptr, MS_BIND, nullptr), 0);
    std::ofstream("/proc/sys/net/ipv4/ping_group_range") << "0 2147483647";
    const ToolRun answered = runTool("ping -c 2 -W 1500 127.0.0.1");
    const ToolRun overIPv6 = runTool("ping6 -c 1 ::1%lo");
    run({"sh", "-c", "ip route add blackhole 192.0.2.0/25; ip route add 192.0.2.128/25 dev lo"});
    const ToolRun unreachable = runTool("ping -c 1 -W 1 192.0.2.1");
    const ToolRun unanswered = runTool("ping -c 1 -W 50 192.0.2.129");
    std::ofstream("/proc/sys/net/ipv4/ping_group_range") << "1 0";
    run({"sh", "-c", "ip route del 192.0.2.0/25; ip route del 192.0.2.128/25"});
    ::umount("/usr/bin/ping");

    EXPECT_EQ(answered.status, 0) << answered.errors;
    EXPECT_TRUE(answered.output.contains("\n2 packets transmitted, 2 received, 0% packet loss, time 100"))
        << answered.output;
    EXPECT_GE(answered.wallMilliseconds, 1000);
    EXPECT_EQ(overIPv6.status, 0) << overIPv6.errors;
    EXPECT_TRUE(overIPv6.output.contains("\nrtt min/avg/max/mdev = 0.")) << overIPv6.output;
    EXPECT_EQ(unreachable.status, 69) << unreachable.output;
    EXPECT_EQ(unanswered.status, 1);
    EXPECT_TRUE(unanswered.output.contains(" 0 received, 100% packet loss")) << unanswered.output;
    EXPECT_GE(unanswered.wallMilliseconds, 50);
}

/// Both ends of connections over the loopback; the listening socket comes first.
std::vector<UniqueDescriptor> connections(int family, std::uint16_t port, int count) {
    sockaddr_in6 address{};
    address.sin6_family = static_cast<sa_family_t>(family);
    address.sin6_port = htons(port);
    if (family == AF_INET6)
        address.sin6_addr = in6addr_loopback;
    else
        reinterpret_cast<sockaddr_in&>(address).sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const socklen_t size = family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
    std::vector<UniqueDescriptor> sockets;
    sockets.emplace_back(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    EXPECT_EQ(::bind(sockets[0].get(), reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_EQ(::listen(sockets[0].get(), 128), 0);
    for (int i = 0; i < count; ++i) {
        sockets.emplace_back(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
        EXPECT_EQ(::connect(sockets.back().get(), reinterpret_cast<sockaddr*>(&address), size), 0);
        sockets.emplace_back(::accept4(sockets[0].get(), nullptr, nullptr, SOCK_CLOEXEC));
    }
    return sockets;
}

/// Lines that match as a whole.
std::ptrdiff_t linesLike(const std::string& text, const std::string& pattern) {
    const std::regex line("(^|\n)" + pattern + "(?=\n)");
    return std::distance(std::sregex_iterator(text.begin(), text.end(), line), {});
}

TEST_F(ToolsInSandbox, NetstatListsTheSocketsOfBothFamilies) {
    auto ipv4 = connections(AF_INET, 4001, 3);
    auto ipv6 = connections(AF_INET6, 4002, 1);
    // Two clients hang up; the server has noticed both and answers the second.
    ipv4[1].reset();
    ipv4[3].reset();
    char byte = 0;
    EXPECT_EQ(::recv(ipv4[2].get(), &byte, 1, 0) + ::recv(ipv4[4].get(), &byte, 1, 0), 0);
    ipv4[4].reset();
    const ToolRun result = runTool("netstat -n -p tcp");
    EXPECT_EQ(result.status, 0);
    struct Case {
        const char* pattern;
        std::ptrdiff_t count;
    };
    for (const Case& each :
         {Case{"tcp4 0 0 - - ESTABLISHED", 2}, Case{R"(tcp4 \d \d - - CLOSE_WAIT)", 1}, Case{"tcp4 .* TIME_WAIT", 1},
          Case{"tcp4 0 128 - - LISTEN", 1}, Case{"tcp6 0 0 - - ESTABLISHED", 2}, Case{"tcp6 .*", 3}})
        EXPECT_EQ(linesLike(result.output, each.pattern), each.count) << each.pattern << '\n' << result.output;
}

/// A tunnel device that is up as long as it is held.
UniqueDescriptor tunnel(const char* name, short mode) {
    UniqueDescriptor device(::open("/dev/net/tun", O_RDWR | O_CLOEXEC));
    ifreq request{};
    std::strcpy(request.ifr_name, name);
    request.ifr_flags = static_cast<short>(mode | IFF_NO_PI);
    if (!device || ::ioctl(device.get(), TUNSETIFF, &request) != 0)
        device.reset();
    return device;
}

void configure(const std::string& script) {
    const ToolRun result = run({"sh", "-ec", script});
    ASSERT_EQ(result.status, 0) << result.errors;
}

TEST_F(ToolsInSandbox, TellsInterfacesRoutesAndRouters) {
    const UniqueDescriptor work = tunnel("corp-vpn.1", IFF_TUN);
    const UniqueDescriptor lan = tunnel("wlan-guest", IFF_TAP);
    if (!work || !lan || run({"ip", "-V"}).status != 0)
        GTEST_SKIP() << "needs /dev/net/tun and iproute2";
    configure("ip link set corp-vpn.1 up; ip addr add 10.8.0.2/24 dev corp-vpn.1; ip link set wlan-guest up;"
              "ip addr add 192.0.2.10/24 dev wlan-guest; ip addr add 192.0.2.11/24 dev wlan-guest;"
              "ip route add default via 192.0.2.9 dev wlan-guest metric 700;"
              "ip route add default via 192.0.2.1 dev wlan-guest metric 600;"
              "ip route add default dev corp-vpn.1 table 51820; ip route add 100.64.0.0/10 dev corp-vpn.1 table 52;"
              "ip route add unreachable 203.0.113.0/24; ip -6 addr add 2001:db8::10/64 dev wlan-guest nodad;"
              "ip -6 route add default via fe80::1 dev wlan-guest");
    struct Case {
        const char* words;
        std::vector<std::string> present;
        std::vector<std::string> absent;
    };
    for (const Case& each :
         {Case{"ifconfig",
               {"\ntun_corp_vpn_1: flags=", "\tinet 10.8.0.2 netmask 0xffffff00\n", "RUNNING", "status: active"},
               {"LOWER_UP"}},
          Case{"netstat -rn",
               {"tun_corp_vpn_1\n", "\n10.8/24 ", "\n100.64/10 ", "fe80::1%wlan-guest", "tap_wlan_guest\n"},
               {"203.0.113", "224.0.0", "255"}},
          Case{"netstat -rn -f inet",
               {"\ndefault            192.0.2.1          UGS     wlan-guest\n", " 192.0.2.9 "},
               {"100.64", "Internet6"}},
          Case{"netstat -rn -f inet6", {"fe80::1%wlan-guest", "\n2001:db8::/64 "}, {"192.0.2", "ff00::"}},
          Case{"ipconfig getifaddr wlan-guest", {"192.0.2.10\n"}, {"192.0.2.11"}},
          Case{"ipconfig getoption wlan-guest router", {"192.0.2.1\n"}, {"192.0.2.9"}}}) {
        const ToolRun result = runTool(each.words);
        EXPECT_EQ(result.status, 0) << result.errors;
        for (const std::string& text : each.present)
            EXPECT_TRUE(result.output.contains(text)) << text << " in\n" << result.output;
        for (const std::string& text : each.absent)
            EXPECT_FALSE(result.output.contains(text)) << text << " in\n" << result.output;
    }
    for (const char* none : {"ipconfig getoption corp-vpn.1 router", "ipconfig getifaddr no-such-interface-name"}) {
        const ToolRun result = runTool(none);
        EXPECT_EQ(result.status, 1) << none;
        EXPECT_EQ(result.output + result.errors, "") << none;
    }
}

TEST_F(ToolsInSandbox, ATunnelIsAVPNByItsAddressesAndRoutes) {
    if (!tunnel("probe", IFF_TUN) || run({"ip", "-V"}).status != 0)
        GTEST_SKIP() << "needs /dev/net/tun and iproute2";
    const InetAddressParser addressParser;
    const VPNTunnelInterfaceParser tunnelParser{Re2RegularExpressionCompiler()};
    const std::string v4 = "ip addr add 10.8.0.2/32 dev $1; ", v6 = "ip addr add 2001:db8::2/128 dev $1 nodad; ",
                      route = "ip route add 10.20.0.0/16 dev $1";
    const struct {
        const char* name;
        std::string script;
        bool expected;
    } cases[] = {{"corp-vpn", "", false},
                 {"corp-vpn", route, false},
                 {"corp-vpn", v4, false},
                 {"corp-vpn", v4 + route, true},
                 {"corp-vpn", v4 + route + " table 52", true},
                 {"corp-vpn", v4 + "ip route add 0.0.0.0/1 dev $1; ip route add 128.0.0.0/1 dev $1", false},
                 {"corp-vpn", v4 + route + "; ip link set $1 down", false},
                 {"utun7", v4, true},
                 {"utun7", v6, false},
                 {"utun7", v6 + "ip route add default dev $1", false},
                 {"utun7", v6 + "ip route add 2001:db8:5::/48 dev $1", true}};
    for (const auto& [name, script, expected] : cases) {
        const UniqueDescriptor device = tunnel(name, IFF_TUN);
        configure("set -- " + std::string(name) + "; ip link set $1 up; " + script);
        EXPECT_EQ(evaluateVPNActivity(parseVPNConnectionServices(runTool("scutil --nc list").output),
                                      tunnelParser.parseVPNTunnelInterfaces(runTool("ifconfig").output),
                                      parseVPNRoutes(runTool("netstat -rn").output), addressParser),
                  expected)
            << name << ": " << script;
    }
}

} // namespace
} // namespace tolvo::test
