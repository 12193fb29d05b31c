#include "platform/linux/inet_address_parser.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/shell_wifi_network_metadata_resolver.h"
#include "probes/vpn_activity.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_command_runner.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

using Connection = VPNConnectionServiceState;

const Re2RegularExpressionCompiler compiler;
const InetAddressParser addressParser;

TEST(VPNConnectionServices, AreReadFromTheLinesThatNameAVPN) {
    const std::string list = "* (Connected)      ABC-123 VPN (com.x) \"Office\"      [VPN:com.x]\n"
                             "* ( disconnecting\t)  D \"half [VPN:y]\n  (CONNECTING) E \"\" \"b\" [VPN:y]\n"
                             "* (Disconnected) ABC-124 PPP \"Home\" [PPP:L2TP]\n* (Invalid) F [VPN:x]\n"
                             "* (Connected [VPN:x]\n* Connected) G [VPN:x]\n[VPN:(connected)  \n";
    const std::vector<VPNConnectionServiceStatus> expected{{"ABC-123", "Office", Connection::Connected},
                                                           {"D", std::nullopt, Connection::Disconnecting},
                                                           {"E", "", Connection::Connecting}};
    EXPECT_EQ(parseVPNConnectionServices(list), expected);
}

TEST(VPNRoutes, AreSpecificIfTheyNameParticularNetworks) {
    for (const std::string text : {"8.8.8.8", "10.8/16", "128.0/2", "2001:db8::/32", "fd00::1%utun3", "225/8", "0.0/8"})
        EXPECT_TRUE(isSpecificRoute(text, addressParser)) << text;
    for (const std::string text :
         {"Default",         "::/0",    "0/1",         "128.0/1",  "/8",          "127/8",     "169.254.0.0/16",
          "169.254.3.4",     "0.1.2.3", "224.0.0.0/4", "239.1/16", "224.0.0.251", "127.0.0.1", "ff02::/16",
          "fe80::%utun3/64", "febf::1", "::1",         "::",       "10.8",        "link#4",    ""})
        EXPECT_FALSE(isSpecificRoute(text, addressParser)) << text;
}

class MetadataResolver : public ::testing::Test {
protected:
    bool isVPNActive() { return runTask(loop, resolver.isVPNActive()).value(); }

    const std::string services = "/usr/sbin/scutil --nc list", interfaces = "/sbin/ifconfig",
                      routes = "/usr/sbin/netstat -rn";
    ManualLoop loop;
    ScriptedCommandRunner commands;
    ShellWiFiNetworkMetadataResolver resolver{commands, compiler, addressParser, 2};
};

TEST_F(MetadataResolver, AsksOfATunnelWhatItsKindNeeds) {
    const std::string up = "flags=8051<UP,POINTOPOINT,RUNNING> mtu 1380\n", v4 = "\tinet 10.8.0.2 --> 10.8.0.1\n",
                      v6 = "\tinet6 2001:db8::1 prefixlen 64\n", linkLocal = "\tinet6 fe80::1%utun3 prefixlen 64\n";
    const struct {
        std::string interfaces, routes;
        bool expected;
    } cases[] = {
        {"", "8.8.8.8 x utun3", false},
        {"utun3: " + up + v4, "", true},
        {"ipsec0:" + up + "\tinet 127.0.0.1\n" + v4, "", true},
        {"ppp0: " + up + "\tinet 169.254.1.1\n\tinet 240.0.0.1\n\tinet \n", "8.8.8.8 x ppp0", false},
        {"utun3: " + up + linkLocal, "2001:db8::/32 x utun3", false},
        {"utun3: " + up + v6, "default x utun3\n2001:db8::/32 x utun4", false},
        {"utun3: " + up + linkLocal + v6, "2001:db8::/32 x utun3", true},
        {"utun3: " + up + v6, "8.8.8.8 utun3 utun4 !\nInternet: utun3\nDestination utun3\n", false},
        {"tun0: " + up + v4, "10.8/16 utun9 tun0 1200", true},
        {"tap0: " + up + v4 + v6, "0/1 x tap0", false},
        {"utun3: flags=1<UP>\n" + v4, "", false},
        {"utun3: flags=1<up,RUNNING>\n" + v4, "", false},
        {"utun3: " + up + v4 + "\tstatus: active\n\tstatus:  InActive \n", "", false},
        {"utun3: " + up + v4 + "\tstatus: inactive\n\tstatus: active\n", "", true},
        {"utun3: " + up + "en0: " + up + v4 + v6, "8.8.8.8 x utun3", false},
        {"utun3: " + up + "\tutun4: " + up + v4, "", true},
        {"utun3 " + up + v4, "", false},
    };
    for (const auto& [interfaceText, routeText, expected] : cases) {
        commands.prints(interfaces, interfaceText);
        commands.prints(routes, routeText);
        for (const std::string state : {"Disconnected", "Connecting", "Connected"}) {
            commands.prints(services, "* (" + state + ") A [VPN:x]\n");
            EXPECT_EQ(isVPNActive(), expected || state == "Connected") << interfaceText << routeText << state;
        }
    }
}

TEST_F(MetadataResolver, RunsTheToolsTogetherAndGoesOnWithoutThem) {
    commands.hold(services);
    EXPECT_EQ(runTask(loop, resolver.isVPNActive(), 1), std::nullopt);
    EXPECT_EQ(commands.commandLines, (std::vector{services, interfaces, routes}));
    EXPECT_EQ(commands.requests.front().timeout, 2);
    commands.release(services);
    EXPECT_FALSE(isVPNActive());
    commands.prints(interfaces, "utun0: flags=1<UP,RUNNING>\n\tinet 10.8.0.2\n", 1);
    EXPECT_FALSE(isVPNActive());
    commands.prints(services, "* (Connected) A [VPN:x]\n");
    EXPECT_TRUE(isVPNActive());

    const std::string getAddress = "/usr/sbin/ipconfig getifaddr en0";
    EXPECT_EQ(runTask(loop, resolver.resolveIPAddress("en0")).value(), std::nullopt);
    commands.prints(getAddress, "192.168.1.7\n", 1);
    EXPECT_EQ(runTask(loop, resolver.resolveIPAddress("en0")).value(), std::nullopt);
    commands.prints(getAddress, "192.168.1.7\n");
    EXPECT_EQ(runTask(loop, resolver.resolveIPAddress("en0")).value(), "192.168.1.7");
}

} // namespace
} // namespace tolvo::testing
