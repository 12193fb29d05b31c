#pragma once

#include "platform/linux/wifi_scan_requesting.h"

namespace tolvo {

/// Asks NetworkManager over the system bus, which lets whoever is logged in at the machine scan.
class NetworkManagerScanRequester final : public WiFiScanRequesting {
public:
    NetworkManagerScanRequester() = default;
    /// A dropped request is waited for, up to the few seconds that the bus is given.
    Task<std::expected<void, std::string>> requestScan(std::string interfaceName) override;
};

} // namespace tolvo
