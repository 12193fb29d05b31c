#pragma once

#include "core/async/main_loop.h"
#include "platform/linux/bus_connection.h"
#include "platform/linux/wifi_scan_requesting.h"

#include <string>

namespace tolvo {

/// Asks NetworkManager over the system bus, which lets whoever is logged in at the machine scan. Every request ends
/// within longestWait, whatever the bus does. The loop outlives it, and it outlives its requests.
class NetworkManagerScanRequester final : public WiFiScanRequesting {
public:
    /// NetworkManager answers in milliseconds, and may be starting anew.
    static constexpr Seconds usualLongestWait{5};

    explicit NetworkManagerScanRequester(MainLoop& loop, std::string busAddress = BusConnection::systemBusAddress(),
                                         Seconds longestWait = usualLongestWait);

    Task<std::expected<void, std::string>> requestScan(std::string interfaceName) override;

private:
    MainLoop& loop_;
    const std::string busAddress_;
    const Seconds longestWait_;
};

} // namespace tolvo
