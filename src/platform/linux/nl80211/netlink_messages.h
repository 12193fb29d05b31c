#pragma once

#include "platform/linux/nl80211/netlink_attributes.h"

#include <optional>

namespace tolvo {

/// One message out of a received datagram.
struct NetlinkMessage {
    std::uint16_t type = 0;
    std::uint16_t flags = 0;
    std::uint32_t sequence = 0;
    Bytes payload;

    /// What an error or an end of a dump reports: 0, or the number of the error. Nothing for other messages.
    std::optional<int> reportedError() const;
};

/// Takes the next message off the front of a datagram; nothing at its end, or where what follows is cut short.
std::optional<NetlinkMessage> takeNetlinkMessage(Bytes& datagram);

/// A message of a generic netlink family: the payload after the netlink header.
struct GenericMessage {
    std::uint8_t command = 0;
    Bytes attributes;
};

std::optional<GenericMessage> parseGenericMessage(Bytes payload);

} // namespace tolvo
