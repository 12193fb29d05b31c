#include "platform/linux/nl80211/netlink_attributes.h"

#include <linux/netlink.h>

#include <algorithm>

namespace tolvo {

std::optional<NetlinkAttributes::Attribute> NetlinkAttributes::next() {
    nlattr header;
    if (rest_.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, rest_.data(), sizeof header);
    if (header.nla_len < sizeof header || header.nla_len > rest_.size())
        return std::nullopt;
    const Bytes payload = rest_.first(header.nla_len).subspan(sizeof header);
    rest_ = rest_.subspan(std::min<std::size_t>(NLA_ALIGN(header.nla_len), rest_.size()));
    return Attribute{static_cast<std::uint16_t>(header.nla_type & NLA_TYPE_MASK), payload};
}

std::optional<Bytes> NetlinkAttributes::find(std::uint16_t type) const {
    NetlinkAttributes walk = *this;
    while (const auto attribute = walk.next()) {
        if (attribute->type == type)
            return attribute->payload;
    }
    return std::nullopt;
}

} // namespace tolvo
