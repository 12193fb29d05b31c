#include "probes/default_route_parser.h"

#include "core/text.h"

#include <algorithm>
#include <functional>
#include <tuple>
#include <utility>
#include <vector>

namespace tolvo {

namespace {

using commandParsingError::MissingPattern;

struct Route {
    std::string_view gateway;
    std::string_view interfaceName;
};

MissingPattern missingRoute() {
    return {"/usr/sbin/netstat", "default <gateway> ..."};
}

/// The default routes with a gateway of this family, in line order.
std::expected<std::vector<Route>, MissingPattern> defaultRoutes(std::string_view output, AddressFamily family,
                                                                const AddressParsing& addressParser) {
    std::vector<Route> routes;
    for (const std::string_view line : nonEmptyLines(output)) {
        // Few lines have the word at all, and only those are worth splitting.
        const auto columns = line.contains("default") ? tokens(line) : std::vector<std::string_view>();
        if (columns.empty() || columns[0] != "default")
            continue;
        if (columns.size() < 2)
            return std::unexpected(missingRoute());
        // A gateway may also be a link, such as "link#12".
        if (isValidAddress(columns[1], family, addressParser))
            routes.push_back({columns[1], columns.size() < 4 ? std::string_view() : columns[3]});
    }
    return routes;
}

void keepPreferred(std::vector<Route>& routes, std::string_view interfaceName) {
    const auto isPreferred = [&](const Route& route) { return route.interfaceName == interfaceName; };
    if (std::ranges::any_of(routes, isPreferred))
        std::erase_if(routes, std::not_fn(isPreferred));
}

int interfaceRank(std::string_view name) {
    constexpr std::pair<std::string_view, int> ranks[] = {{"en", 0},   {"bridge", 1}, {"awdl", 2}, {"llw", 2},
                                                          {"utun", 4}, {"ipsec", 4},  {"lo", 5}};
    for (const auto& [beginning, rank] : ranks) {
        if (name.starts_with(beginning))
            return rank;
    }
    return 3;
}

} // namespace

std::expected<std::string, CommandParsingError> parseDefaultRoute(std::string_view output, AddressFamily family,
                                                                  const std::optional<std::string>& preferredInterface,
                                                                  const AddressParsing& addressParser) {
    auto routes = defaultRoutes(output, family, addressParser);
    if (!routes)
        return std::unexpected(routes.error());
    if (preferredInterface)
        keepPreferred(*routes, *preferredInterface);
    if (routes->empty())
        return std::unexpected(missingRoute());
    const auto best = std::ranges::min_element(
        *routes, {}, [](const Route& route) { return std::tuple(interfaceRank(route.interfaceName), route.gateway); });
    return std::string(best->gateway);
}

} // namespace tolvo
