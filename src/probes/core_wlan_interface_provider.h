#pragma once

#include "platform/services/wifi_client.h"
#include "probes/wifi_interface_providing.h"

namespace tolvo {

/// Reads the current link from the platform's Wi-Fi client, whose contract is WiFiClient.
class CoreWLANInterfaceProvider final : public WiFiInterfaceProviding {
public:
    explicit CoreWLANInterfaceProvider(WiFiClient& client) : client_(client) {}

    std::optional<WiFiInterfaceSnapshot> currentSnapshot() override;

private:
    WiFiClient& client_;
};

} // namespace tolvo
