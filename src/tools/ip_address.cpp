#include "tools/ip_address.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstring>

namespace tolvo::tools {

std::optional<IPAddress> IPAddress::from(int family, std::span<const std::byte> bytes) {
    IPAddress address{family, {}};
    if (bytes.size() * 8 != address.bitCount())
        return std::nullopt;
    std::memcpy(address.bytes.data(), bytes.data(), bytes.size());
    return address;
}

bool IPAddress::isUnspecified() const {
    return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

bool IPAddress::isLinkLocal() const {
    return family == AF_INET6 && bytes[0] == 0xFE && (bytes[1] & 0xC0) == 0x80;
}

std::size_t IPAddress::bitCount() const {
    return family == AF_INET6 ? 128 : 32;
}

std::string IPAddress::text() const {
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    return ::inet_ntop(family == AF_INET6 ? AF_INET6 : AF_INET, bytes.data(), buffer.data(), buffer.size());
}

} // namespace tolvo::tools
