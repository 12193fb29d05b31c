#include "tools/address_table.h"
#include "tools/link_table.h"
#include "tools/proc_tcp_table.h"
#include "tools/route_listing.h"
#include "tools/route_table.h"
#include "tools/tcp_table.h"
#include "tools/vpn_service.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/if_link.h>
#include <linux/if_tun.h>
#include <linux/inet_diag.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <array>
#include <string_view>

namespace tolvo::tools {
namespace {

using Payload = std::vector<std::byte>;

template<typename Value>
Payload raw(const Value& value) {
    const auto bytes = std::as_bytes(std::span(&value, 1));
    return {bytes.begin(), bytes.end()};
}

Payload raw(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

void append(Payload& payload, const Payload& more) {
    payload.insert(payload.end(), more.begin(), more.end());
    payload.resize(NLMSG_ALIGN(payload.size()));
}

Payload attribute(unsigned type, const Payload& content) {
    Payload result =
        raw(nlattr{static_cast<std::uint16_t>(NLA_HDRLEN + content.size()), static_cast<std::uint16_t>(type)});
    append(result, content);
    return result;
}

template<typename... Parts>
Payload joined(const Parts&... parts) {
    Payload result;
    (append(result, parts), ...);
    return result;
}

Payload address(const char* text) {
    std::array<std::byte, 16> bytes{};
    const bool isIPv6 = std::string_view(text).contains(':');
    EXPECT_EQ(::inet_pton(isIPv6 ? AF_INET6 : AF_INET, text, bytes.data()), 1) << text;
    return {bytes.begin(), bytes.begin() + (isIPv6 ? 16 : 4)};
}

IPAddress parsed(const char* text) {
    return *IPAddress::from(std::string_view(text).contains(':') ? AF_INET6 : AF_INET, address(text));
}

template<typename Item>
std::vector<Item> itemsOf(void (*parse)(const NetlinkMessage&, std::vector<Item>&), std::uint16_t type, Bytes payload) {
    std::vector<Item> items;
    parse(NetlinkMessage{type, 0, 1, payload}, items);
    return items;
}

Payload linkMessage(const char* name, const char* kind, const Payload& data = {}) {
    ifinfomsg header{};
    header.ifi_index = 7;
    header.ifi_flags = IFF_UP | IFF_RUNNING;
    return joined(raw(header), attribute(IFLA_IFNAME, raw(std::string_view(name))), attribute(IFLA_MTU, raw(1420U)),
                  attribute(IFLA_LINKINFO, joined(attribute(IFLA_INFO_KIND, raw(std::string_view(kind))),
                                                  attribute(IFLA_INFO_DATA, data))));
}

rtmsg routeHeader(unsigned char length, unsigned char type = RTN_UNICAST, unsigned char table = RT_TABLE_MAIN) {
    rtmsg header{};
    header.rtm_family = AF_INET;
    header.rtm_dst_len = length;
    header.rtm_type = type;
    header.rtm_table = table;
    return header;
}

Payload way(int interfaceIndex, const char* gateway, unsigned char flags = 0) {
    const Payload attributes = attribute(RTA_GATEWAY, address(gateway));
    return joined(
        raw(rtnexthop{static_cast<std::uint16_t>(sizeof(rtnexthop) + attributes.size()), flags, 0, interfaceIndex}),
        attributes);
}

TEST(KernelTables, AMessageCutAnywhereGivesNothingWrong) {
    const Payload link = linkMessage("tailscale0", "tun", attribute(IFLA_TUN_TYPE, raw(std::uint8_t{IFF_TUN})));
    ifaddrmsg addressHeader{AF_INET, 24, 0, 0, 7};
    const Payload addressMessage = joined(raw(addressHeader), attribute(IFA_ADDRESS, address("10.8.0.1")),
                                          attribute(IFA_LOCAL, address("10.8.0.2")));
    const Payload route = joined(raw(routeHeader(16)), attribute(RTA_DST, address("10.8.0.0")),
                                 attribute(RTA_MULTIPATH, joined(way(7, "10.8.0.1"), way(8, "10.9.0.1"))));
    inet_diag_msg socket{};
    socket.idiag_family = AF_INET;
    EXPECT_EQ(itemsOf(parseLink, RTM_NEWLINK, link).size(), 1U);
    EXPECT_EQ(itemsOf(parseAddress, RTM_NEWADDR, addressMessage).size(), 1U);
    EXPECT_EQ(itemsOf(parseRoute, RTM_NEWROUTE, route).size(), 2U);
    for (std::size_t size = 0; size < 200; ++size) {
        // A vector of its own, so that a read behind the cut is seen.
        const auto cut = [&](const Payload& whole) {
            return Payload(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(std::min(size, whole.size())));
        };
        for (const Link& each : itemsOf(parseLink, RTM_NEWLINK, cut(link)))
            EXPECT_EQ(each.name, "tailscale0");
        for (const InterfaceAddress& each : itemsOf(parseAddress, RTM_NEWADDR, cut(addressMessage)))
            EXPECT_TRUE(each.address == parsed("10.8.0.1") || each.address == parsed("10.8.0.2"));
        for (const Route& each : itemsOf(parseRoute, RTM_NEWROUTE, cut(route)))
            EXPECT_EQ(each.prefixLength, 16U);
        std::string rows;
        const Payload cutSocket = cut(raw(socket));
        appendTCPRow({TCPDIAG_GETSOCK, 0, 1, cutSocket}, TCPRowForm::Full, rows);
        EXPECT_EQ(rows.empty(), size < sizeof socket);
        // The same bytes as a datagram of messages with nonsense for lengths.
        visitMessages(cut(route), [](const NetlinkMessage&) {});
    }
}

TEST(KernelTables, TunnelsAreKnownByTheirNamesEverywhere) {
    struct Case {
        const char* name;
        const char* kind;
        const char* toolName;
        bool isWireGuard = false;
    };
    const Payload tap = attribute(IFLA_TUN_TYPE, raw(std::uint8_t{IFF_TAP}));
    for (const Case& each : {Case{"eth0", "", "eth0"}, Case{"wg0-mullvad", "wireguard", "utun_wg0_mullvad", true},
                             Case{"tailscale0", "tun", "tun_tailscale0"}, Case{"tun-work", "tun", "tun_work"},
                             Case{"nm-xfrm-1", "xfrm", "ipsec_nm_xfrm_1"}, Case{"ppp0", "ppp", "ppp0"},
                             Case{"br-1.7", "bridge", "br_1_7"}, Case{"vpn\xC3\xA9", "veth", "vpn__"}}) {
        const Link link = itemsOf(parseLink, RTM_NEWLINK, linkMessage(each.name, each.kind)).at(0);
        EXPECT_EQ(toolName(link), each.toolName);
        EXPECT_EQ(wireGuardServices({&link, 1}).size(), each.isWireGuard ? 1U : 0U) << each.name;
    }
    EXPECT_EQ(toolName(itemsOf(parseLink, RTM_NEWLINK, linkMessage("vnet3", "tun", tap)).at(0)), "tap_vnet3");
    Link down{7, "wg0", IFF_POINTOPOINT, 1420, "wireguard", false};
    EXPECT_TRUE(wireGuardServices({&down, 1}).empty());
}

TEST(KernelTables, RoutesThatLeadNowhereAreLeftOut) {
    const Payload gateway = joined(attribute(RTA_OIF, raw(7U)), attribute(RTA_GATEWAY, address("192.0.2.1")));
    const auto waysOf = [](const rtmsg& header, const Payload& attributes) {
        return itemsOf(parseRoute, RTM_NEWROUTE, joined(raw(header), attributes)).size();
    };
    EXPECT_EQ(waysOf(routeHeader(0), gateway), 1U);
    EXPECT_EQ(waysOf(routeHeader(0, RTN_UNICAST, RT_TABLE_COMPAT), joined(gateway, attribute(RTA_TABLE, raw(51820U)))),
              1U);
    EXPECT_EQ(waysOf(routeHeader(0, RTN_UNREACHABLE), gateway), 0U);
    EXPECT_EQ(waysOf(routeHeader(32, RTN_LOCAL, RT_TABLE_LOCAL), gateway), 0U);
    EXPECT_EQ(waysOf(routeHeader(33), gateway), 0U);
    EXPECT_EQ(
        waysOf(routeHeader(0), attribute(RTA_MULTIPATH, joined(way(7, "192.0.2.1", RTNH_F_DEAD), way(8, "192.0.2.9")))),
        1U);
    const Payload gone = joined(raw(rtnexthop{0, 0, 0, 7}), gateway);
    EXPECT_EQ(waysOf(routeHeader(0), attribute(RTA_MULTIPATH, gone)), 0U);
}

TEST(RouteListing, DestinationsReadAsTheRoutePatternsExpect) {
    struct Case {
        const char* network;
        unsigned length;
        const char* text;
    };
    for (const Case& each :
         {Case{"0.0.0.0", 0, "default"}, Case{"::", 0, "default"}, Case{"0.0.0.0", 1, "0/1"},
          Case{"128.0.0.0", 1, "128.0/1"}, Case{"10.8.0.0", 16, "10.8/16"}, Case{"10.0.0.0", 24, "10/24"},
          Case{"127.0.0.0", 8, "127/8"}, Case{"172.16.0.0", 12, "172.16/12"}, Case{"192.168.0.0", 16, "192.168.0/16"},
          Case{"169.254.0.0", 16, "169.254/16"}, Case{"224.0.0.0", 4, "224.0.0/4"},
          Case{"10.8.0.128", 25, "10.8.0.128/25"}, Case{"100.100.100.100", 32, "100.100.100.100"},
          Case{"fe80::", 64, "fe80::%wlan0/64"}, Case{"2001:db8::", 32, "2001:db8::/32"},
          Case{"2001:db8::1", 128, "2001:db8::1"}})
        EXPECT_EQ(destinationText({parsed(each.network), each.length, {}, 7, RT_TABLE_MAIN, 0, true}, "wlan0"),
                  each.text);
}

TEST(RouteListing, TheRouterIsThatOfTheMainTableIfItHasOne) {
    const std::vector<Link> links{{7, "wlp2s0", IFF_UP, 1500, "", false},
                                  {8, "wg.x", IFF_UP, 1420, "wireguard", false}};
    std::vector<Route> routes{{parsed("0.0.0.0"), 0, {}, 8, 51820, 0, true},
                              {parsed("0.0.0.0"), 0, parsed("10.1.0.1"), 7, 100, 0, true}};
    EXPECT_TRUE(listRouterRoutes(AF_INET, routes, links).contains("10.1.0.1"));
    routes.push_back({parsed("0.0.0.0"), 0, parsed("192.0.2.1"), 7, RT_TABLE_MAIN, 600, true});
    const std::string router = listRouterRoutes(AF_INET, routes, links);
    EXPECT_TRUE(router.contains("default            192.0.2.1          UGS     wlp2s0\n")) << router;
    EXPECT_FALSE(router.contains("10.1.0.1"));
    EXPECT_TRUE(listAllRoutes(routes, links, {}).contains("default            link#8             US      utun_wg_x\n"));
}

TEST(IPAddress, ReadsAsTheCLibraryWritesIt) {
    for (const char* text : {"::", "::1", "1::", "fe80::1", "2001:db8::1:0:0:1", "2001:0:0:1::", "1:2:3:4:5:6:7:8",
                             "::ffff:192.0.2.1", "1:0:2:3:4:5:6:7", "ff02::fb", "0.0.0.0", "255.10.0.199"})
        EXPECT_EQ(parsed(text).text(), text);
}

TEST(ProcTCPTable, StandsInForADumpThatTheKernelRefuses) {
    std::string rows;
    appendTCPRowsOfProcTable("  sl  local_address rem_address   st tx_queue\n"
                             "   0: 0100007F:1F90 00000000:0000 0A 00000000:00000000\n"
                             "   1: 0100007F:1F90 0100007F:C001 08 00000000:00000000\n"
                             "   2: 0100007F:1F90 0100007F:C001 zz\n   3:",
                             "tcp4", rows);
    EXPECT_EQ(rows, "tcp4 0 0 - - LISTEN\ntcp4 0 0 - - CLOSE_WAIT\n");
}

} // namespace
} // namespace tolvo::tools
