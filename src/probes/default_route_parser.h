#pragma once

#include "platform/services/address_parsing.h"
#include "probes/command_parsing_error.h"
#include "probes/ip_address_validity.h"

#include <expected>
#include <optional>
#include <string>
#include <string_view>

namespace tolvo {

/// The gateway of the best default route of a route table. Routes through the preferred interface go before all others
/// if there is any; then physical interfaces go before bridges, and those before tunnels.
std::expected<std::string, CommandParsingError> parseDefaultRoute(std::string_view output, AddressFamily family,
                                                                  const std::optional<std::string>& preferredInterface,
                                                                  const AddressParsing& addressParser);

} // namespace tolvo
