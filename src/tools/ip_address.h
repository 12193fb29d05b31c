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

} // namespace tolvo::tools
