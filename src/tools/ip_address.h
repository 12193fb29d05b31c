#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tolvo::tools {

/// An IPv4 or IPv6 address in network order. An IPv4 address uses the first four bytes; the rest is 0.
struct IPAddress {
    /// AF_INET or AF_INET6
    int family = 0;
    std::array<std::uint8_t, 16> bytes{};

    bool operator==(const IPAddress&) const = default;

    /// Nothing unless the bytes are as long as the family's addresses are.
    static std::optional<IPAddress> from(int family, std::span<const std::byte> bytes);

    bool isUnspecified() const;
    /// fe80::/10
    bool isLinkLocal() const;
    std::size_t bitCount() const;
    std::string text() const;
};

/// Room that the longest address needs.
inline constexpr std::size_t longestAddressText = 46;

// Both write without a final NUL and give the end of what they wrote. They stand beside inet_ntop because the socket
// table has ten thousands of addresses, and inet_ntop formats through sprintf.
char* writeIPv4(char* out, const std::uint8_t* bytes);
/// The canonical form: lower case, the longest run of zeros shortened, dotted for IPv4-mapped addresses.
char* writeIPv6(char* out, const std::uint8_t* bytes);

} // namespace tolvo::tools
