#pragma once

#include "platform/services/address_parsing.h"

#include <string_view>

namespace tolvo {

enum class AddressFamily { IPv4, IPv6 };

/// Four decimal numbers from 0 to 255 with a full stop between them. Each may have a sign and leading zeros, as some
/// DHCP servers and route tables print them.
bool isValidIPv4Address(std::string_view text);

/// An IPv6 address, with or without a zone behind a "%". The zone itself may be anything.
bool isValidIPv6Address(std::string_view text, const AddressParsing& addressParser);

bool isValidAddress(std::string_view text, AddressFamily family, const AddressParsing& addressParser);

} // namespace tolvo
