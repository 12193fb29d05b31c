#include "tools/route_table.h"

#include "tools/netlink_dump.h"

#include <linux/rtnetlink.h>
#include <sys/socket.h>

namespace tolvo::tools {

namespace {

bool leadsThroughInterface(const rtmsg& header) {
    const bool isInternet = header.rtm_family == AF_INET || header.rtm_family == AF_INET6;
    return isInternet && header.rtm_type == RTN_UNICAST && (header.rtm_flags & RTM_F_CLONED) == 0;
}

/// A gateway of the other family has its family in front.
std::optional<IPAddress> viaGateway(Bytes payload) {
    const auto family = valueAt<std::uint16_t>(payload);
    return family ? IPAddress::from(*family, payload.subspan(sizeof(std::uint16_t))) : std::nullopt;
}

void readGateway(std::uint16_t type, Bytes payload, int family, Route& route) {
    if (type == RTA_GATEWAY)
        route.gateway = IPAddress::from(family, payload);
    else if (type == RTA_VIA)
        route.gateway = viaGateway(payload);
}

void readAttribute(std::uint16_t type, Bytes payload, int family, Route& route) {
    if (type == RTA_DST)
        route.destination = IPAddress::from(family, payload).value_or(route.destination);
    else if (type == RTA_OIF)
        route.interfaceIndex = valueAt<std::uint32_t>(payload).value_or(0);
    else if (type == RTA_TABLE)
        route.table = valueAt<std::uint32_t>(payload).value_or(route.table);
    else if (type == RTA_PRIORITY)
        route.metric = valueAt<std::uint32_t>(payload).value_or(0);
    else
        readGateway(type, payload, family, route);
}

void appendWays(Bytes ways, const Route& base, std::vector<Route>& routes) {
    while (const auto way = valueAt<rtnexthop>(ways)) {
        if (way->rtnh_len < sizeof(rtnexthop) || way->rtnh_len > ways.size())
            return;
        Route route = base;
        route.interfaceIndex = static_cast<unsigned>(way->rtnh_ifindex);
        visitAttributes(
            ways.subspan(sizeof(rtnexthop), way->rtnh_len - sizeof(rtnexthop)),
            [&](std::uint16_t type, Bytes payload) { readGateway(type, payload, base.destination.family, route); });
        if ((way->rtnh_flags & RTNH_F_DEAD) == 0)
            routes.push_back(route);
        ways = ways.subspan(std::min<std::size_t>(RTNH_ALIGN(way->rtnh_len), ways.size()));
    }
}

} // namespace

bool Route::isInMainTable() const {
    return table == RT_TABLE_MAIN || table == RT_TABLE_DEFAULT;
}

void parseRoute(const NetlinkMessage& message, std::vector<Route>& routes) {
    const auto header = valueAt<rtmsg>(message.payload);
    if (message.type != RTM_NEWROUTE || !header || !leadsThroughInterface(*header))
        return;
    Route route{{header->rtm_family, {}},
                header->rtm_dst_len,
                std::nullopt,
                0,
                header->rtm_table,
                0,
                header->rtm_protocol != RTPROT_KERNEL};
    Bytes ways;
    visitAttributes(behind(message.payload, sizeof(rtmsg)), [&](std::uint16_t type, Bytes payload) {
        if (type == RTA_MULTIPATH)
            ways = payload;
        else
            readAttribute(type, payload, header->rtm_family, route);
    });
    if (route.table == RT_TABLE_LOCAL || route.prefixLength > route.destination.bitCount())
        return;
    if (!ways.empty())
        appendWays(ways, route, routes);
    else if (route.interfaceIndex != 0 && (header->rtm_flags & RTNH_F_DEAD) == 0)
        routes.push_back(route);
}

std::expected<std::vector<Route>, int> readRoutes(int family) {
    rtmsg request{};
    request.rtm_family = static_cast<std::uint8_t>(family);
    return dumpTable<Route>(NETLINK_ROUTE, RTM_GETROUTE, request, parseRoute);
}

} // namespace tolvo::tools
