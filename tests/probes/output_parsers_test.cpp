#include "platform/linux/inet_address_parser.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/default_route_parser.h"
#include "probes/dig_query_time_parser.h"
#include "probes/ipconfig_parser.h"
#include "probes/ping_summary_parser.h"
#include "probes/tcp_state_parser.h"
#include "probes/vpn_activity.h"

#include <gtest/gtest.h>

#include <tuple>

namespace tolvo::testing {
namespace {

const Re2RegularExpressionCompiler compiler;
const InetAddressParser addressParser;

const std::string linuxPing = "2 packets transmitted, 2 received, 0% packet loss, time 1006ms\n"
                              "rtt min/avg/max/mdev = 0.042/0.114/0.186/0.072 ms\n";
const std::string bsdPing = "2 packets transmitted, 1 packets received, 50.0% packet loss\n"
                            "round-trip min/avg/max/stddev = 9.521/9.521/9.521/0.000 ms\n";

TEST(PingSummaryParser, ReadsBothFamiliesAndKeepsTheLossOfWhatItCannotRead) {
    const std::string unreadable = "0.5% packet loss\nrtt min/avg/max/mdev = 1/1.2.3/3/4 ms";
    const std::string huge(400, '9');
    const PingProbeMeasurement nothing{{}, {}, 100, false};
    const struct {
        std::string output;
        PingProbeMeasurement expected;
    } cases[] = {
        {linuxPing, {0.114, 0.072, 0, true}},
        {bsdPing, {9.521, 0.0, 50, true}},
        {"2 packets transmitted, 0 packets received, 100.0% packet loss", nothing},
        {"2 transmitted, 0 received, +2 errors, 37.5% packet loss, time 9ms", {{}, {}, 37.5, false}},
        {"round-trip min/avg/max/stddev = 1./2/.3/4 ms", {2, 4, 100, true}},
        {unreadable, {{}, {}, 0.5, false}},
        {huge + "% packet loss\nrtt min/avg/max/mdev = 1/" + huge + "/3/4 ms", nothing},
        {"2 Pakete gesendet, 100% Paketverlust\nrtt min/avg/max/mdev = 0,042/0,114/0,186/0,072 ms", nothing},
        {"rtt min/avg/max/mdev = -1/inf/nan/0x1 ms", nothing},
    };
    const PingSummaryParser parser(compiler);
    for (const auto& [output, expected] : cases)
        EXPECT_EQ(parser.measurement(output), expected) << output;
    EXPECT_EQ(parser.summary(unreadable).error(),
              CommandParsingError(commandParsingError::InvalidNumber{"/sbin/ping", "avg", "1.2.3"}));
}

TEST(DigQueryTimeParser, ReadsTheFooter) {
    const DigQueryTimeParser parser(compiler);
    EXPECT_EQ(parser.queryTime(";; ANSWER SECTION:\n;; Query time: 23 msec\n;; SERVER: 1.1.1.1#53(1.1.1.1)\n"), 23);
    for (const std::string& number : {std::string("-1"), std::string("1.5"), std::string(), std::string(400, '9')})
        EXPECT_FALSE(parser.queryTime("Query time: " + number + " msec")) << number;
}

TEST(TCPStateParser, CountsByTheLastWordOfTCPRows) {
    const std::string table = "Proto Recv-Q Send-Q  Local Address    Foreign Address     (state)\n"
                              "tcp4       0      0  10.0.0.2.55644   203.0.113.80.443    ESTABLISHED\r\n"
                              "TCP46      0      0  *.22             *.*                 time_wait.\n"
                              "  tcp      0      0  10.0.0.2:5       10.0.0.3:6          \"(Close_Wait)\", \n"
                              "udp4       0      0  *.5353           *.*                 ESTABLISHED\n"
                              "tcp4 +ESTABLISHED\ntcp4 TIMEWAIT\ntcp\nESTABLISHED\n\n \n.\ntcp .\ntcp6 CLOSE_WAIT";
    EXPECT_EQ(parseTCPConnectionStates(table), (TCPConnectionStateCounts{1, 1, 2}));
    EXPECT_EQ(parseTCPConnectionStates(""), TCPConnectionStateCounts());
}

TEST(IPConfigParser, TakesOneIPv4AddressHoweverItIsWritten) {
    const std::string zeros(100'000, '0');
    for (const std::string& text : {std::string("001.002.003.004"), std::string("+1.-0.0.255"), "1.2.3." + zeros + "4"})
        EXPECT_EQ(parseIPConfigAddress(" \n" + text + "\n"), text);
    for (const std::string text : {"256.1.1.1", "1.2.3", "1.2.3.4.5", "1.2.3.", "1..2.3", "1.2.3.-1", "1.2.3.+-0",
                                   "1.2.3. 4", "1.2.3.18446744073709551617", "a.b.c.d", "1.2.3.4 1.2.3.5"})
        EXPECT_EQ(parseIPConfigAddress(text).error(),
                  CommandParsingError(commandParsingError::InvalidIPAddress{"/usr/sbin/ipconfig", text}));
    EXPECT_FALSE(parseIPConfigAddress(" \n\t"));
}

TEST(DefaultRouteParser, PrefersTheInterfaceThenPhysicalLinksThenTheLowerText) {
    const std::string heading = "Routing tables\n\nDestination  Gateway  Flags  Netif Expire\n";
    const struct {
        std::string rows;
        std::optional<std::string> expected;
        std::optional<std::string> preferred = std::nullopt;
        AddressFamily family = AddressFamily::IPv4;
    } cases[] = {
        {"default 10.8.0.1 UGSc utun3\ndefault 192.168.1.1 UGSc en0\n127 127.0.0.1 UCS lo0", "192.168.1.1"},
        {"default 192.168.1.1 UGSc en0\ndefault 10.0.0.10 UGSc en1\ndefault 10.0.0.9 UGSc en2", "10.0.0.10"},
        {"default 9.0.0.1 UGSc lo0\ndefault 8.0.0.1 UGSc wlan0\ndefault 7.0.0.1 UGSc ipsec0", "8.0.0.1"},
        {"default 3.0.0.1 UGSc llw0\ndefault 4.0.0.1 UGSc bridge0\ndefault 2.0.0.1", "4.0.0.1"},
        {"default link#12 UCS en0\ndefault 1.1.1.1 UGS utun1", "1.1.1.1"},
        {"default 10.0.0.1 UG en0\ndefault 10.8.0.1 UG utun2", "10.8.0.1", "utun2"},
        {"default 10.0.0.1 UG en0\ndefault 10.8.0.1 UG utun2", "10.0.0.1", "en7"},
        {"default fe80::1%en0 UGcg en0\ndefault fe80::%utun0 UGcIg utun0", "fe80::1%en0", {}, AddressFamily::IPv6},
        {"default 192.168.1.1 UG en0", std::nullopt, {}, AddressFamily::IPv6},
        {"default 192.168.1.1 UG en0\ndefault", std::nullopt},
        {"default/4 192.168.1.1 UG en0\nDefault 192.168.1.1 UG en0", std::nullopt},
        {"default %en0 UG en0\ndefault ::1\x01 UG en0\ndefault a::b::c UG en0", std::nullopt, {}, AddressFamily::IPv6},
        {std::string("default ::1\0 UG en0", 20), std::nullopt, {}, AddressFamily::IPv6},
    };
    for (const auto& [rows, expected, preferred, family] : cases) {
        const auto gateway = parseDefaultRoute(heading + rows, family, preferred, addressParser);
        EXPECT_EQ(gateway ? std::optional(*gateway) : std::nullopt, expected) << rows;
    }
}

/// All that can be read out of one text, whichever tool it came from.
auto readings(std::string_view text) {
    static const PingSummaryParser ping(compiler);
    static const DigQueryTimeParser dig(compiler);
    static const VPNTunnelInterfaceParser tunnels(compiler);
    const bool isVPNActive = evaluateVPNActivity(
        parseVPNConnectionServices(text), tunnels.parseVPNTunnelInterfaces(text), parseVPNRoutes(text), addressParser);
    const auto router = parseDefaultRoute(text, AddressFamily::IPv4, "en0", addressParser);
    return std::tuple(ping.measurement(text), dig.queryTime(text).value_or(-1), parseTCPConnectionStates(text),
                      router.has_value(), parseIPConfigAddress(text).has_value(), isVPNActive);
}

// A parser whose time grows faster than the text doesn't end within the time that ctest allows.
TEST(AllParsers, ReadNothingOutOfTenMegabytesOfAnything) {
    for (const std::string unit : {"\n", " ", "9", "\xFF", "a\n", "tcp ", "default\n", "tun0: flags=1<",
                                   "tun0: flags=1<>\n", "[VPN:(\"", "tun0 "}) {
        std::string text;
        while (text.size() < 10'000'000)
            text += unit;
        EXPECT_EQ(readings(text), readings("")) << unit;
    }
}

} // namespace
} // namespace tolvo::testing
