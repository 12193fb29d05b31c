#pragma once

#include "platform/linux/nl80211/netlink_attributes.h"

#include <linux/netlink.h>

#include <string_view>
#include <vector>

namespace tolvo::testing {

/// Builds the attributes of a netlink message in memory.
class NetlinkBuilder {
public:
    NetlinkBuilder& put(int type, std::string_view payload) {
        const nlattr header{static_cast<std::uint16_t>(NLA_HDRLEN + payload.size()), static_cast<std::uint16_t>(type)};
        append(&header, sizeof header);
        append(payload.data(), payload.size());
        bytes_.resize(NLA_ALIGN(bytes_.size()));
        return *this;
    }
    template<std::integral Integer>
    NetlinkBuilder& put(int type, Integer value) {
        return put(type, std::string_view(reinterpret_cast<const char*>(&value), sizeof value));
    }
    NetlinkBuilder& put(int type, const NetlinkBuilder& nested) {
        const Bytes inner(nested.bytes_);
        return put(type | NLA_F_NESTED, std::string_view(reinterpret_cast<const char*>(inner.data()), inner.size()));
    }

    const std::vector<std::byte>& bytes() const { return bytes_; }

private:
    void append(const void* data, std::size_t size) {
        const auto* first = static_cast<const std::byte*>(data);
        bytes_.insert(bytes_.end(), first, first + size);
    }

    std::vector<std::byte> bytes_;
};

} // namespace tolvo::testing
