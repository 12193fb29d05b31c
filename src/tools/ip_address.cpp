#include "tools/ip_address.h"

#include <sys/socket.h>

#include <algorithm>
#include <charconv>
#include <cstring>

namespace tolvo::tools {

namespace {

constexpr std::size_t groupCount = 8;

char* writeNumber(char* out, unsigned number, int base) {
    return std::to_chars(out, out + 5, number, base).ptr;
}

unsigned group(const std::uint8_t* bytes, std::size_t index) {
    return static_cast<unsigned>(bytes[2 * index]) << 8 | bytes[2 * index + 1];
}

struct ZeroRun {
    std::size_t first = groupCount;
    std::size_t length = 0;
};

/// The first of the longest runs of at least two zero groups.
ZeroRun longestZeroRun(const std::uint8_t* bytes) {
    ZeroRun longest{groupCount, 1};
    for (std::size_t first = 0; first < groupCount;) {
        std::size_t end = first;
        while (end < groupCount && group(bytes, end) == 0)
            ++end;
        if (end - first > longest.length)
            longest = {first, end - first};
        first = end + 1;
    }
    return longest;
}

bool isMappedIPv4(const std::uint8_t* bytes) {
    static constexpr std::array<std::uint8_t, 12> prefix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF};
    return std::memcmp(bytes, prefix.data(), prefix.size()) == 0;
}

} // namespace

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
    std::array<char, longestAddressText> buffer{};
    char* const end =
        family == AF_INET6 ? writeIPv6(buffer.data(), bytes.data()) : writeIPv4(buffer.data(), bytes.data());
    return {buffer.data(), end};
}

char* writeIPv4(char* out, const std::uint8_t* bytes) {
    for (std::size_t i = 0; i < 4; ++i) {
        if (i > 0)
            *out++ = '.';
        out = writeNumber(out, bytes[i], 10);
    }
    return out;
}

char* writeIPv6(char* out, const std::uint8_t* bytes) {
    if (isMappedIPv4(bytes)) {
        static constexpr std::string_view prefix = "::ffff:";
        return writeIPv4(std::ranges::copy(prefix, out).out, bytes + 12);
    }
    const ZeroRun zeros = longestZeroRun(bytes);
    for (std::size_t i = 0; i < groupCount;) {
        if (i == zeros.first) {
            *out++ = ':';
            *out++ = ':';
            i += zeros.length;
            continue;
        }
        if (i > 0 && i != zeros.first + zeros.length)
            *out++ = ':';
        out = writeNumber(out, group(bytes, i), 16);
        ++i;
    }
    return out;
}

} // namespace tolvo::tools
