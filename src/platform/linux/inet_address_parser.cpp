#include "platform/linux/inet_address_parser.h"

#include <algorithm>
#include <arpa/inet.h>

namespace tolvo {

namespace {

/// Both address records are bytes in network order, which is what inet_pton writes.
template<class Address>
std::optional<Address> parse(int family, std::string_view text) {
    std::array<char, INET6_ADDRSTRLEN> terminated{};
    // The C function would stop at a zero byte and accept what stands before it.
    if (text.size() >= terminated.size() || text.contains('\0'))
        return std::nullopt;
    std::ranges::copy(text, terminated.begin());
    Address address;
    if (inet_pton(family, terminated.data(), address.bytes.data()) != 1)
        return std::nullopt;
    return address;
}

} // namespace

std::optional<IPv4Address> InetAddressParser::ipv4Address(std::string_view text) const {
    return parse<IPv4Address>(AF_INET, text);
}

std::optional<IPv6Address> InetAddressParser::ipv6Address(std::string_view text) const {
    return parse<IPv6Address>(AF_INET6, text);
}

} // namespace tolvo
