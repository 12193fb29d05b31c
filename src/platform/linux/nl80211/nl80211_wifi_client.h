#pragma once

#include "platform/linux/nl80211/nl80211_scanner.h"
#include "platform/services/wifi_client.h"

namespace tolvo {

/// The Wi-Fi hardware as the kernel's nl80211 shows it. Everything but the start of a scan works without privileges.
class Nl80211WiFiClient final : public WiFiClient {
public:
    Nl80211WiFiClient(MainLoop& loop, Nl80211Querying& kernel, WiFiScanRequesting& requester);

    std::optional<WiFiLink> currentLink() override;
    Task<ScanOutcome> scan() override { return scanner_.scan(); }

private:
    Nl80211Querying& kernel_;
    Nl80211Scanner scanner_;
};

} // namespace tolvo
