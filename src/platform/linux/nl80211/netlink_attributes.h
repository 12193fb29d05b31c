#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

namespace tolvo {

using Bytes = std::span<const std::byte>;

/// The attributes in a stretch of a netlink message, read in place. Each is checked where it is asked for: one that is
/// cut short, or not of the size that its type wants, is as good as missing. The bytes outlive this object.
class NetlinkAttributes {
public:
    struct Attribute {
        std::uint16_t type;
        Bytes payload;
    };

    explicit NetlinkAttributes(Bytes bytes) : rest_(bytes) {}

    /// Takes the next attribute off the front; nothing at the end, or where what follows is cut short.
    std::optional<Attribute> next();

    std::optional<Bytes> find(std::uint16_t type) const;
    bool has(std::uint16_t type) const { return find(type).has_value(); }
    /// The attributes in the attribute; none if it is missing.
    NetlinkAttributes nested(std::uint16_t type) const { return NetlinkAttributes(find(type).value_or(Bytes())); }

    template<std::integral Integer>
    std::optional<Integer> integer(std::uint16_t type) const {
        const std::optional<Bytes> payload = find(type);
        if (!payload || payload->size() != sizeof(Integer))
            return std::nullopt;
        Integer value;
        std::memcpy(&value, payload->data(), sizeof value);
        return value;
    }

private:
    Bytes rest_;
};

} // namespace tolvo
