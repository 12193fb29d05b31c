#include "fuzz/require.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/tcp_state_parser.h"
#include "probes/vpn_connection_services.h"
#include "probes/vpn_tunnel_interfaces.h"
#include "tools/interface_listing.h"
#include "tools/proc_tcp_table.h"
#include "tools/route_listing.h"
#include "tools/tcp_table.h"
#include "tools/vpn_service.h"

#include <sys/socket.h>

#include <algorithm>
#include <cstdint>
#include <string_view>

namespace {

using namespace tolvo;
using namespace tolvo::tools;
using fuzzing::require;

struct Tables {
    std::vector<Link> links;
    std::vector<InterfaceAddress> addresses;
    std::vector<Route> routes;
    std::string tcpRows;
};

Tables tablesIn(Bytes datagram) {
    Tables tables;
    visitMessages(datagram, [&](const NetlinkMessage& message) {
        parseLink(message, tables.links);
        parseAddress(message, tables.addresses);
        parseRoute(message, tables.routes);
        appendTCPRow(message, tables.tcpRows);
    });
    return tables;
}

std::size_t lineCount(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count(text, '\n'));
}

/// What a tool prints stays text, line by line.
void requireLines(std::string_view text) {
    require(text.empty() || text.ends_with('\n'));
    require(std::ranges::none_of(text, [](char c) { return c >= 0 && c < ' ' && c != '\n' && c != '\t'; }));
}

/// The probes find each tunnel in the listing that is one by its name there.
void requireSoundInterfaces(const Tables& tables) {
    static const Re2RegularExpressionCompiler compiler;
    static const VPNTunnelInterfaceParser parser(compiler);
    const std::string listing = listInterfaces(tables.links, tables.addresses);
    requireLines(listing);
    const auto isTunnel = [](const Link& link) { return vpnTunnelKind(toolName(link)).has_value(); };
    require(parser.parseVPNTunnelInterfaces(listing).size() ==
            static_cast<std::size_t>(std::ranges::count_if(tables.links, isTunnel)));
}

void requireSoundServices(const Tables& tables) {
    const auto services = wireGuardServices(tables.links);
    require(parseVPNConnectionServices(listServices(services)).size() == services.size());
}

void requireSoundSockets(const Tables& tables) {
    requireLines(tables.tcpRows);
    const auto counts = parseTCPConnectionStates(tables.tcpRows);
    require(counts.established + counts.timeWait + counts.closeWait <=
            static_cast<std::int64_t>(lineCount(tables.tcpRows)));
}

} // namespace

/// Any bytes as a datagram of rtnetlink or of the socket table, and as /proc/net/tcp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Tables tables = tablesIn(std::as_bytes(std::span(data, size)));
    requireSoundInterfaces(tables);
    requireSoundServices(tables);
    requireSoundSockets(tables);
    requireLines(listAllRoutes(tables.routes, tables.links, tables.addresses));
    for (const int family : {AF_INET, AF_INET6})
        requireLines(listRouterRoutes(family, tables.routes, tables.links));
    std::string rows;
    appendTCPRowsOfProcTable({reinterpret_cast<const char*>(data), size}, "tcp4", rows);
    requireLines(rows);
    return 0;
}
