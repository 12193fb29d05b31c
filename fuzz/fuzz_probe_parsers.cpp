#include "core/text.h"
#include "fuzz/require.h"
#include "platform/linux/inet_address_parser.h"
#include "platform/re2/re2_regular_expression.h"
#include "probes/default_route_parser.h"
#include "probes/dig_query_time_parser.h"
#include "probes/ipconfig_parser.h"
#include "probes/ping_summary_parser.h"
#include "probes/tcp_state_parser.h"
#include "probes/vpn_activity.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string_view>

namespace {

using namespace tolvo;
using fuzzing::require;

const Re2RegularExpressionCompiler compiler;
const InetAddressParser addressParser;
const PingSummaryParser pingParser(compiler);
const DigQueryTimeParser digParser(compiler);
const VPNTunnelInterfaceParser tunnelParser(compiler);

void expectReadablePing(std::string_view text) {
    const PingProbeMeasurement ping = pingParser.measurement(text);
    require(ping.didSucceed == ping.latencyMilliseconds.has_value());
    require(ping.didSucceed == ping.jitterMilliseconds.has_value());
    require(std::isfinite(ping.packetLossPercent) && std::isfinite(ping.latencyMilliseconds.value_or(0)));
    require(std::isfinite(digParser.queryTime(text).value_or(0)));
}

/// The same count, from the splitting that the fast one does without.
TCPConnectionStateCounts plainCounts(std::string_view text) {
    TCPConnectionStateCounts counts;
    for (const auto line : nonEmptyLines(text)) {
        const auto columns = tokens(line);
        if (columns.empty() || !lowerCased(columns.front()).starts_with("tcp"))
            continue;
        std::string_view state = columns.back();
        const auto isPunctuation = [](char c) {
            return std::string_view("!\"#%&'()*,-./:;?@[\\]_{}").find(c) != std::string_view::npos;
        };
        while (!state.empty() && isPunctuation(state.front()))
            state.remove_prefix(1);
        while (!state.empty() && isPunctuation(state.back()))
            state.remove_suffix(1);
        counts.established += upperCased(state) == "ESTABLISHED";
        counts.timeWait += upperCased(state) == "TIME_WAIT";
        counts.closeWait += upperCased(state) == "CLOSE_WAIT";
    }
    return counts;
}

void expectGatewayOfTheText(std::string_view text, AddressFamily family) {
    const auto any = parseDefaultRoute(text, family, std::nullopt, addressParser);
    const auto preferred = parseDefaultRoute(text, family, "en0", addressParser);
    require(any.has_value() == preferred.has_value());
    require(!any || (text.contains(*any) && isValidAddress(*any, family, addressParser)));
}

void expectReadableVPN(std::string_view text) {
    const auto services = parseVPNConnectionServices(text);
    const auto tunnels = tunnelParser.parseVPNTunnelInterfaces(text);
    const auto routes = parseVPNRoutes(text);
    for (const auto& service : services)
        require(!service.identifier.empty());
    for (const auto& tunnel : tunnels)
        require(vpnTunnelKind(tunnel.name) == tunnel.kind && !tunnel.flags.contains('>'));
    for (const auto& route : routes)
        require(!route.destination.empty() && vpnTunnelKind(route.interfaceName));
    const bool isActive = evaluateVPNActivity(services, tunnels, routes, addressParser);
    require(!isActive || !services.empty() || !tunnels.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    expectReadablePing(text);
    require(parseTCPConnectionStates(text) == plainCounts(text));
    require(parseIPConfigAddress(text).value_or("1.1.1.1").size() >= 7);
    expectGatewayOfTheText(text, AddressFamily::IPv4);
    expectGatewayOfTheText(text, AddressFamily::IPv6);
    expectReadableVPN(text);
    return 0;
}
