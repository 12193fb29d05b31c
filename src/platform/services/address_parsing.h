#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tolvo {

/// In network order.
struct IPv4Address {
    std::array<std::uint8_t, 4> bytes{};
    bool operator==(const IPv4Address&) const = default;
};

/// In network order.
struct IPv6Address {
    std::array<std::uint8_t, 16> bytes{};
    bool operator==(const IPv6Address&) const = default;
};

/// Reads the text forms of addresses. The whole text is the address: no blanks, no zone, no prefix length.
class AddressParsing {
public:
    AddressParsing(const AddressParsing&) = delete;
    AddressParsing& operator=(const AddressParsing&) = delete;
    virtual ~AddressParsing() = default;

    virtual std::optional<IPv4Address> ipv4Address(std::string_view text) const = 0;
    virtual std::optional<IPv6Address> ipv6Address(std::string_view text) const = 0;

protected:
    AddressParsing() = default;
};

} // namespace tolvo
