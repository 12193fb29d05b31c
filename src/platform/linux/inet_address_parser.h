#pragma once

#include "platform/services/address_parsing.h"

namespace tolvo {

/// Reads addresses with inet_pton: four decimal octets without leading zeros, and all forms of RFC 4291.
class InetAddressParser final : public AddressParsing {
public:
    InetAddressParser() = default;
    std::optional<IPv4Address> ipv4Address(std::string_view text) const override;
    std::optional<IPv6Address> ipv6Address(std::string_view text) const override;
};

} // namespace tolvo
