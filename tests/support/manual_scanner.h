#pragma once

#include "core/async/one_shot.h"
#include "probes/wifi_network_scanning.h"

#include <optional>
#include <utility>

namespace tolvo::testing {

/// Each scan lasts until the test gives its outcome.
class ManualScanner final : public WiFiNetworkScanning {
public:
    Task<WiFiScanOutcome> scanNetworks() override {
        ++scanCount;
        pending = OneShot<WiFiScanOutcome>();
        co_return co_await pending.take();
    }

    void finish(WiFiScanOutcome outcome) const { pending.set(std::move(outcome)); }

    int scanCount = 0;
    OneShot<WiFiScanOutcome> pending;
};

} // namespace tolvo::testing
