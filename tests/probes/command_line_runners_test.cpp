#include "platform/linux/inet_address_parser.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/command_line_dns_lookup_runner.h"
#include "probes/command_line_ping_probe_runner.h"
#include "probes/command_line_tcp_connection_counter.h"
#include "tests/support/run_task.h"
#include "tests/support/scripted_command_runner.h"

#include <gtest/gtest.h>

namespace tolvo::testing {
namespace {

const Re2RegularExpressionCompiler compiler;
const InetAddressParser addressParser;

class CommandLineRunners : public ::testing::Test {
protected:
    CommandLinePingProbeRunner pinger(std::int64_t packetCount, double gracePeriod) {
        return {commands, compiler, addressParser, {packetCount, gracePeriod}, [this] { return wifiInterface; }};
    }
    std::optional<std::string> router() {
        auto runner = pinger(2, 0.5);
        return runTask(loop, runner.routerIPAddress(1.5)).value_or("no end");
    }

    ManualLoop loop;
    ScriptedCommandRunner commands;
    CommandLineDNSLookupRunner dns{commands, compiler};
    CommandLineTCPConnectionCounter counter{commands};
    std::optional<std::string> wifiInterface = "en0";
};

TEST_F(CommandLineRunners, BuildTheirCommandLinesAndTimeouts) {
    auto ping = pinger(2, 0.5), none = pinger(-1, -3);
    runTask(loop, ping.ping("1.1.1.1", 1.5126));
    runTask(loop, ping.ping("fe80::1%en0", 1.5));
    runTask(loop, none.ping("router.local", 0));
    runTask(loop, dns.queryTime("example.com", 0.4));
    runTask(loop, dns.queryTime("example.com", 1.5));
    runTask(loop, counter.connectionCounts(1.25));
    const std::vector<CommandRequest> expected{{"/sbin/ping", {"-c", "2", "-W", "1513", "1.1.1.1"}, 4.5252},
                                               {"/sbin/ping6", {"-c", "2", "fe80::1%en0"}, 4.5},
                                               {"/sbin/ping", {"-c", "-1", "-W", "1", "router.local"}, 0.001},
                                               {"/usr/bin/dig", {"+time=1", "+tries=1", "example.com"}, 0.4},
                                               {"/usr/bin/dig", {"+time=2", "+tries=1", "example.com"}, 1.5},
                                               {"/usr/sbin/netstat", {"-n", "-p", "tcp"}, 1.25}};
    EXPECT_EQ(commands.requests, expected);
}

TEST_F(CommandLineRunners, ReadWhatAToolPrintedWhateverItsStatusAndNothingElse) {
    const std::string ping = "/sbin/ping -c 2 -W 1500 h", dig = "/usr/bin/dig +time=2 +tries=1 d",
                      netstat = "/usr/sbin/netstat -n -p tcp";
    auto pingRunner = pinger(2, 0.5);
    const PingProbeMeasurement halfLost{2, 4, 50, true}, failed{{}, {}, 100, false};
    for (const std::int32_t exitCode : {0, 2}) {
        commands.prints(ping, "50.0% packet loss\nrtt min/avg/max/mdev = 1/2/3/4 ms", exitCode);
        commands.prints(dig, ";; Query time: 7 msec", exitCode);
        commands.prints(netstat, "", exitCode);
        EXPECT_EQ(runTask(loop, pingRunner.ping("h", 1.5)), halfLost);
        EXPECT_EQ(runTask(loop, dns.queryTime("d", 1.5)).value(), 7);
        EXPECT_EQ(runTask(loop, counter.connectionCounts(1.5)).value(), TCPConnectionStateCounts());
    }
    for (const std::string& line : {ping, dig, netstat})
        commands.fails(line, commandRunnerError::TimedOut{});
    EXPECT_EQ(runTask(loop, pingRunner.ping("h", 1.5)), failed);
    EXPECT_EQ(runTask(loop, dns.queryTime("d", 1.5)).value(), std::nullopt);
    EXPECT_EQ(runTask(loop, counter.connectionCounts(1.5)).value(), std::nullopt);
}

TEST_F(CommandLineRunners, FindTheRouterStepByStep) {
    const std::string option = "/usr/sbin/ipconfig getoption en0 router", v4 = "/usr/sbin/netstat -rn -f inet",
                      v6 = "/usr/sbin/netstat -rn -f inet6";
    EXPECT_EQ(router(), std::nullopt);
    EXPECT_EQ(commands.commandLines, (std::vector{option, v6, v4, v6}));
    EXPECT_EQ(commands.requests.back().timeout, 1.5);
    commands.prints(v6, "default fe80::2%utun1 UG utun1\n");
    EXPECT_EQ(router(), "fe80::2%utun1");
    commands.prints(v4, "default 10.0.0.1 UG en0\n", 1);
    wifiInterface.reset();
    EXPECT_EQ(router(), "fe80::2%utun1") << "a failed run is no answer, whatever it printed";
    commands.prints(v4, "default 10.0.0.1 UG en0\n");
    EXPECT_EQ(router(), "10.0.0.1");
    wifiInterface = "en0";
    commands.prints(v6, "default fe80::2%eth1 UG en1\ndefault fe80::3%en0 UG en0\n");
    commands.prints(option, "not an address");
    EXPECT_EQ(router(), "fe80::3%en0");
    commands.prints(option, "192.168.1.1\n");
    EXPECT_EQ(router(), "192.168.1.1");
}

} // namespace
} // namespace tolvo::testing
