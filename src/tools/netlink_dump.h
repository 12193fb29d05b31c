#pragma once

#include "tools/netlink_message.h"

#include <cerrno>
#include <expected>
#include <functional>
#include <vector>

namespace tolvo::tools {

/// Sends one dump request (its fixed part) and hands over every message of the kernel's answer. The error is an errno
/// value: EINTR when the table changed during the dump and what was handed over may be inconsistent, ENOBUFS when
/// messages were lost, EBADMSG when one was cut off.
std::expected<void, int> dumpOnce(int protocol, std::uint16_t type, Bytes request,
                                  const std::function<void(const NetlinkMessage&)>& visit);

/// All items of a kernel table, whole or not at all. `parse` appends to the vector what one message's payload holds.
template<typename Item, typename Request>
std::expected<std::vector<Item>, int> dumpTable(int protocol, std::uint16_t type, const Request& request,
                                                void (*parse)(const NetlinkMessage&, std::vector<Item>&)) {
    // A table that changes during each of so many dumps in a row is under attack rather than in use.
    constexpr int attempts = 8;
    std::vector<Item> items;
    for (int attempt = 1;; ++attempt) {
        items.clear();
        const auto outcome = dumpOnce(protocol, type, std::as_bytes(std::span(&request, 1)),
                                      [&](const NetlinkMessage& message) { parse(message, items); });
        if (outcome)
            return items;
        const bool isWorthRepeating = outcome.error() == EINTR || outcome.error() == ENOBUFS;
        if (!isWorthRepeating || attempt == attempts)
            return std::unexpected(outcome.error());
    }
}

} // namespace tolvo::tools
