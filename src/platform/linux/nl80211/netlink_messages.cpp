#include "platform/linux/nl80211/netlink_messages.h"

#include <linux/genetlink.h>
#include <linux/netlink.h>

#include <algorithm>
#include <cerrno>

namespace tolvo {

std::optional<int> NetlinkMessage::reportedError() const {
    if (type != NLMSG_ERROR && type != NLMSG_DONE)
        return std::nullopt;
    std::int32_t code = 0;
    if (payload.size() < sizeof code)
        return type == NLMSG_DONE ? 0 : EBADMSG;
    std::memcpy(&code, payload.data(), sizeof code);
    // A dump that ended well may say how much it sent; the kernel's errors are negative.
    if (code >= 0)
        return 0;
    return code > -4096 ? -code : EBADMSG;
}

std::optional<NetlinkMessage> takeNetlinkMessage(Bytes& datagram) {
    nlmsghdr header;
    if (datagram.size() < sizeof header)
        return std::nullopt;
    std::memcpy(&header, datagram.data(), sizeof header);
    if (header.nlmsg_len < sizeof header || header.nlmsg_len > datagram.size())
        return std::nullopt;
    const NetlinkMessage message{header.nlmsg_type, header.nlmsg_flags, header.nlmsg_seq,
                                 datagram.first(header.nlmsg_len).subspan(sizeof header)};
    const std::size_t aligned = (std::size_t{header.nlmsg_len} + NLMSG_ALIGNTO - 1) & ~std::size_t{NLMSG_ALIGNTO - 1};
    datagram = datagram.subspan(std::min(aligned, datagram.size()));
    return message;
}

std::optional<GenericMessage> parseGenericMessage(Bytes payload) {
    genlmsghdr header;
    if (payload.size() < GENL_HDRLEN)
        return std::nullopt;
    std::memcpy(&header, payload.data(), sizeof header);
    return GenericMessage{header.cmd, payload.subspan(GENL_HDRLEN)};
}

} // namespace tolvo
