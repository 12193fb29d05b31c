#pragma once

#include <linux/netlink.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>

namespace tolvo::tools {

using Bytes = std::span<const std::byte>;

/// The first bytes as a value of this type; nothing when there are too few.
template<typename Value>
std::optional<Value> valueAt(Bytes bytes) {
    if (bytes.size() < sizeof(Value))
        return std::nullopt;
    Value value;
    std::memcpy(&value, bytes.data(), sizeof(Value));
    return value;
}

/// A text that ends at its NUL or with the bytes.
inline std::string textAt(Bytes bytes) {
    const auto end = std::ranges::find(bytes, std::byte{0});
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(end - bytes.begin())};
}

/// One message; the payload lies in the datagram.
struct NetlinkMessage {
    std::uint16_t type = 0;
    std::uint16_t flags = 0;
    std::uint32_t sequence = 0;
    Bytes payload;
};

/// Hands over the messages of a datagram in order. False when one is cut off or says an impossible length; what stood
/// before it has been handed over then.
template<typename Visit>
bool visitMessages(Bytes datagram, Visit visit) {
    while (!datagram.empty()) {
        const auto header = valueAt<nlmsghdr>(datagram);
        if (!header || header->nlmsg_len < NLMSG_HDRLEN || header->nlmsg_len > datagram.size())
            return false;
        visit(NetlinkMessage{header->nlmsg_type, header->nlmsg_flags, header->nlmsg_seq,
                             datagram.subspan(NLMSG_HDRLEN, header->nlmsg_len - NLMSG_HDRLEN)});
        datagram = datagram.subspan(std::min<std::size_t>(NLMSG_ALIGN(header->nlmsg_len), datagram.size()));
    }
    return true;
}

/// What follows the fixed part of a message, nothing when the message is shorter than that.
inline Bytes behind(Bytes payload, std::size_t fixedPart) {
    return payload.subspan(std::min<std::size_t>(NLMSG_ALIGN(fixedPart), payload.size()));
}

/// Hands over type and payload of each whole attribute; stops at the first that is cut off.
template<typename Visit>
void visitAttributes(Bytes attributes, Visit visit) {
    while (const auto header = valueAt<nlattr>(attributes)) {
        if (header->nla_len < NLA_HDRLEN || header->nla_len > attributes.size())
            return;
        visit(static_cast<std::uint16_t>(header->nla_type & NLA_TYPE_MASK),
              attributes.subspan(NLA_HDRLEN, static_cast<std::size_t>(header->nla_len - NLA_HDRLEN)));
        attributes = attributes.subspan(std::min<std::size_t>(NLA_ALIGN(header->nla_len), attributes.size()));
    }
}

} // namespace tolvo::tools
