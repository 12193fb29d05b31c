#include "tools/tool.h"

#include "tools/address_table.h"
#include "tools/route_table.h"
#include "tools/text_output.h"

#include <net/if.h>
#include <sys/socket.h>

#include <algorithm>
#include <string>

namespace tolvo::tools {

namespace {

ToolResult printAddressLine(const IPAddress& address) {
    return succeeded(address.text() + '\n');
}

ToolResult printRouter(unsigned interfaceIndex) {
    auto routes = readRoutes(AF_INET);
    if (!routes)
        return systemError("ipconfig", "reading the routes", routes.error());
    std::erase_if(*routes, [&](const Route& route) {
        return !route.isDefault() || route.interfaceIndex != interfaceIndex || !route.gateway ||
               route.gateway->family != AF_INET;
    });
    const auto best = std::ranges::min_element(
        *routes, {}, [](const Route& route) { return std::pair(!route.isInMainTable(), route.metric); });
    return best == routes->end() ? ToolResult{exitStatus::NothingFound, {}, {}} : printAddressLine(*best->gateway);
}

ToolResult printAddress(unsigned interfaceIndex) {
    const auto addresses = readAddresses(AF_INET);
    if (!addresses)
        return systemError("ipconfig", "reading the addresses", addresses.error());
    const auto primary = std::ranges::find_if(*addresses, [&](const InterfaceAddress& address) {
        return address.interfaceIndex == interfaceIndex && !address.isSecondary;
    });
    return primary == addresses->end() ? ToolResult{exitStatus::NothingFound, {}, {}}
                                       : printAddressLine(primary->address);
}

} // namespace

ToolResult runIpconfig(ToolArguments arguments) {
    const bool asksAddress = arguments.size() == 2 && arguments[0] == "getifaddr";
    const bool asksRouter = arguments.size() == 3 && arguments[0] == "getoption" && arguments[2] == "router";
    if ((!asksAddress && !asksRouter) || arguments[1].empty())
        return usageError("ipconfig getifaddr INTERFACE | getoption INTERFACE router");
    const unsigned interfaceIndex = ::if_nametoindex(std::string(arguments[1]).c_str());
    if (interfaceIndex == 0)
        return {exitStatus::NothingFound, {}, {}};
    return asksRouter ? printRouter(interfaceIndex) : printAddress(interfaceIndex);
}

} // namespace tolvo::tools
