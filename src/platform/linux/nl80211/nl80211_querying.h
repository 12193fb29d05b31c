#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/nl80211/netlink_attributes.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>

namespace tolvo {

/// Talks with the kernel's nl80211. Main thread only. Errors are errno values, EPROTONOSUPPORT where no Wi-Fi is
/// found at all.
class Nl80211Querying {
public:
    using OnReply = std::function<void(NetlinkAttributes reply)>;
    using OnScanEvent = std::function<void(std::uint8_t command, NetlinkAttributes event)>;

    Nl80211Querying(const Nl80211Querying&) = delete;
    Nl80211Querying& operator=(const Nl80211Querying&) = delete;
    virtual ~Nl80211Querying() = default;

    /// Asks for all that a command lists, of one interface where it wants one. Waits for the end of the reply, but not
    /// for long. A list that fails half-way has told of its first half.
    virtual std::expected<void, int> list(std::uint8_t command, std::optional<std::uint32_t> interfaceIndex,
                                          const OnReply& onReply) = 0;

    /// Starts a scan of all channels that asks for all names, and doesn't wait for it.
    virtual std::expected<void, int> triggerScan(std::uint32_t interfaceIndex) = 0;

    /// Tells of the starts and ends of scans, whoever asked for them, until the registration goes.
    virtual std::expected<LoopRegistration, int> watchScans(OnScanEvent onEvent) = 0;

protected:
    Nl80211Querying() = default;
};

} // namespace tolvo
