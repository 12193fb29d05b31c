#include "probes/ipconfig_parser.h"

#include "core/text.h"
#include "probes/ip_address_validity.h"

#include <utility>

namespace tolvo {

namespace {

constexpr const char* command = "/usr/sbin/ipconfig";

} // namespace

std::expected<std::string, CommandParsingError> parseIPConfigAddress(std::string_view output) {
    std::string address(trimmed(output));
    if (address.empty())
        return std::unexpected(commandParsingError::MissingPattern{command, "IPv4 address"});
    if (!isValidIPv4Address(address))
        return std::unexpected(commandParsingError::InvalidIPAddress{command, std::move(address)});
    return address;
}

} // namespace tolvo
