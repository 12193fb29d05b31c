#include "probes/vpn_connection_services.h"

#include "core/text.h"

#include <utility>

namespace tolvo {

namespace {

/// What stands between the first opening mark and the first closing one behind it, and what follows.
struct Enclosed {
    std::string_view text;
    std::string_view rest;
};

std::optional<Enclosed> firstEnclosed(std::string_view line, char opening, char closing) {
    const auto start = line.find(opening);
    if (start == std::string_view::npos)
        return std::nullopt;
    const auto end = line.find(closing, start + 1);
    if (end == std::string_view::npos)
        return std::nullopt;
    return Enclosed{line.substr(start + 1, end - start - 1), line.substr(end + 1)};
}

/// A line reads: * (Connected) IDENTIFIER kind "Name" [VPN:provider].
std::optional<VPNConnectionServiceStatus> parseLine(std::string_view line) {
    if (!line.contains("[VPN:"))
        return std::nullopt;
    const auto parenthesised = firstEnclosed(line, '(', ')');
    if (!parenthesised)
        return std::nullopt;
    const auto state = fromRawValue<VPNConnectionServiceState>(lowerCased(trimmed(parenthesised->text)));
    const auto words = tokens(parenthesised->rest);
    if (!state || words.empty())
        return std::nullopt;
    VPNConnectionServiceStatus service{std::string(words.front()), std::nullopt, *state};
    if (const auto quoted = firstEnclosed(parenthesised->rest, '"', '"'))
        service.name = quoted->text;
    return service;
}

} // namespace

std::vector<VPNConnectionServiceStatus> parseVPNConnectionServices(std::string_view output) {
    std::vector<VPNConnectionServiceStatus> services;
    for (const std::string_view line : nonEmptyLines(output)) {
        if (auto service = parseLine(line))
            services.push_back(std::move(*service));
    }
    return services;
}

} // namespace tolvo
