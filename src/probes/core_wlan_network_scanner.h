#pragma once

#include "platform/services/wifi_client.h"
#include "probes/wifi_network_scanning.h"

namespace tolvo {

/// Scans with the platform's Wi-Fi client, whose contract is WiFiClient.
class CoreWLANNetworkScanner final : public WiFiNetworkScanning {
public:
    explicit CoreWLANNetworkScanner(WiFiClient& client) : client_(client) {}

    Task<WiFiScanOutcome> scanNetworks() override;

private:
    WiFiClient& client_;
};

} // namespace tolvo
