#include "tools/tool.h"

#include "tools/address_table.h"
#include "tools/link_table.h"
#include "tools/proc_tcp_table.h"
#include "tools/route_listing.h"
#include "tools/route_table.h"
#include "tools/tcp_table.h"
#include "tools/text_output.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>

namespace tolvo::tools {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view tcpHeader = "Active Internet connections (including servers)\n"
                                       "Proto Recv-Q Send-Q Local Address Foreign Address (state)\n";

ToolResult printTCPTable() {
    auto rows = readTCPRows();
    // No row at all would read as a quiet machine; a kernel without socket dumps still has its tables.
    if (!rows)
        rows = readTCPRowsFromProc();
    if (!rows)
        return systemError("netstat", "reading the TCP sockets", rows.error());
    return succeeded(std::move(rows->insert(0, tcpHeader)));
}

ToolResult printRoutes(int family) {
    const auto links = readLinks();
    if (!links)
        return systemError("netstat", "reading the interfaces", links.error());
    const auto routes = readRoutes(family);
    if (!routes)
        return systemError("netstat", "reading the routes", routes.error());
    if (family != AF_UNSPEC)
        return succeeded(listRouterRoutes(family, *routes, *links));
    const auto addresses = readAddresses(AF_INET6);
    if (!addresses)
        return systemError("netstat", "reading the addresses", addresses.error());
    return succeeded(listAllRoutes(*routes, *links, *addresses));
}

} // namespace

ToolResult runNetstat(ToolArguments arguments) {
    if (std::ranges::equal(arguments, std::array{"-n"sv, "-p"sv, "tcp"sv}))
        return printTCPTable();
    if (std::ranges::equal(arguments, std::array{"-rn"sv}))
        return printRoutes(AF_UNSPEC);
    if (std::ranges::equal(arguments, std::array{"-rn"sv, "-f"sv, "inet"sv}))
        return printRoutes(AF_INET);
    if (std::ranges::equal(arguments, std::array{"-rn"sv, "-f"sv, "inet6"sv}))
        return printRoutes(AF_INET6);
    return usageError("netstat -n -p tcp | -rn [-f inet|inet6]");
}

} // namespace tolvo::tools
