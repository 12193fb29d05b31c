#pragma once

#include "core/async/sleep.h"
#include "core/async/task.h"
#include "probes/wifi_interface_providing.h"
#include "probes/wifi_network_metadata_resolving.h"

#include <optional>
#include <string>
#include <utility>

namespace tolvo::testing {

/// A good link on channel 36.
inline WiFiInterfaceSnapshot reading(std::optional<std::string> bssid = "02:00:00:00:00:01") {
    return {"wlan0", "home", std::move(bssid), -50, -95, 866, 36, WiFiBand::FiveGigahertz};
}

/// Gives the reading that the test puts in.
class ScriptedWiFiInterfaceProvider final : public WiFiInterfaceProviding {
public:
    std::optional<WiFiInterfaceSnapshot> currentSnapshot() override { return current; }

    std::optional<WiFiInterfaceSnapshot> current = reading();
};

/// Answers after its delay; a cancelled question gets the empty answer at once.
class ScriptedMetadataResolver final : public WiFiNetworkMetadataResolving {
public:
    Task<std::optional<std::string>> resolveIPAddress(std::string) override {
        ++askedCount;
        if (!co_await wait())
            co_return std::nullopt;
        co_return ipAddress;
    }
    Task<bool> isVPNActive() override { co_return co_await wait() && vpn; }

    double delay = 1;
    std::optional<std::string> ipAddress = "192.0.2.7";
    bool vpn = true;
    int askedCount = 0;

private:
    Task<bool> wait() {
        try {
            co_await sleepFor(Seconds(delay));
        } catch (const CancellationError&) {
            co_return false;
        }
        co_return true;
    }
};

} // namespace tolvo::testing
