#include "tools/proc_tcp_table.h"
#include "tools/route_listing.h"
#include "tools/route_table.h"
#include "tools/vpn_service.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <array>
#include <string_view>

namespace tolvo::tools {
namespace {

IPAddress parsed(std::string_view text) {
    std::array<std::byte, 16> bytes{};
    const int family = text.contains(':') ? AF_INET6 : AF_INET;
    EXPECT_EQ(::inet_pton(family, text.data(), bytes.data()), 1) << text;
    return *IPAddress::from(family, std::span(bytes).first(family == AF_INET6 ? 16 : 4));
}

TEST(KernelTables, TunnelsAreKnownByTheirNamesEverywhere) {
    const std::tuple<const char*, const char*, const char*> cases[] = {{"wg0-mullvad", "wireguard", "utun_wg0_mullvad"},
                                                                       {"nm-xfrm-1", "xfrm", "ipsec_nm_xfrm_1"},
                                                                       {"ppp0", "ppp", "ppp0"},
                                                                       {"br-1.7", "bridge", "br_1_7"},
                                                                       {"vpn\xC3\xA9", "veth", "vpn__"}};
    for (const auto& [name, kind, expected] : cases) {
        Link link{7, name, IFF_UP | IFF_RUNNING, 1420, kind, false};
        EXPECT_EQ(toolName(link), expected);
        EXPECT_EQ(wireGuardServices({&link, 1}).size(), kind == std::string_view("wireguard") ? 1U : 0U) << name;
        link.flags = IFF_POINTOPOINT;
        EXPECT_TRUE(wireGuardServices({&link, 1}).empty()) << name << " is down";
    }
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
